// A journal context to draw on; proves that nothing outlives the test.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/gfx/context.h"
#include "platform/gfx/gdi.h"

inline bool operator==(const POINT& a, const POINT& b) { return a.x == b.x && a.y == b.y; }
inline bool operator==(const SIZE& a, const SIZE& b) { return a.cx == b.cx && a.cy == b.cy; }
inline bool operator==(const RECT& a, const RECT& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
inline std::ostream& operator<<(std::ostream& out, const POINT& point) {
  return out << point.x << "," << point.y;
}
inline std::ostream& operator<<(std::ostream& out, const SIZE& size) {
  return out << size.cx << "x" << size.cy;
}
inline std::ostream& operator<<(std::ostream& out, const RECT& box) {
  return out << box.left << "," << box.top << "," << box.right << "," << box.bottom;
}

class GdiTest : public testing::Test {
 protected:
  void TearDown() override {
    DeleteDC(hdc);
    EXPECT_EQ(gfx::LiveObjects(), before_) << "objects left behind";
  }

  HFONT Font(LONG height, LONG width = 0, LONG escapement = 0) {
    LOGFONTA font{};
    font.lfHeight = height;
    font.lfWidth = width;
    font.lfEscapement = escapement;
    return CreateFontIndirectA(&font);
  }

  // Selects an object that lives only as long as it is selected.
  void Use(HGDIOBJ object) {
    SelectObject(hdc, object);
    DeleteObject(object);
  }

  POINT Position() {
    POINT position{};
    MoveToEx(hdc, 0, 0, &position);
    MoveToEx(hdc, position.x, position.y, nullptr);
    return position;
  }

 private:
  const std::size_t before_ = gfx::LiveObjects();  // counted before the context exists

 protected:
  std::string journal;
  HDC hdc = gfx::CreateJournalContext(journal);
};

// A header of `bits` bits per pixel; a negative height stores the top row first.
inline BITMAPINFO DibInfo(LONG width, LONG height, WORD bits = 24) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = bits;
  return info;
}
