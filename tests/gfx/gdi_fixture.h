// A journal context to draw on; proves that nothing outlives the test.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/gfx/context.h"
#include "platform/gfx/gdi.h"

inline constexpr LONG kMin = -2147483647 - 1;
inline constexpr LONG kMax = 2147483647;

using Numbers = std::vector<LONG>;
inline Numbers Of(POINT point) { return {point.x, point.y}; }
inline Numbers Of(SIZE size) { return {size.cx, size.cy}; }
inline Numbers Of(const RECT& box) { return {box.left, box.top, box.right, box.bottom}; }

// A header of `bits` bits per pixel; a negative height stores the top row first.
inline BITMAPINFO DibInfo(LONG width, LONG height, WORD bits = 24) {
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, width, height, 1, bits, BI_RGB, 0, 0, 0, 0, 0};
  return info;
}

inline HFONT NewFont(LONG height, LONG width = 0, LONG escapement = 0) {
  LOGFONTA font{};
  font.lfHeight = height;
  font.lfWidth = width;
  font.lfEscapement = escapement;
  return CreateFontIndirectA(&font);
}

// Selects an object that lives only as long as it is selected.
inline void Use(HDC hdc, HGDIOBJ object) {
  SelectObject(hdc, object);
  DeleteObject(object);
}

class GdiTest : public testing::Test {
 protected:
  void TearDown() override {
    DeleteDC(hdc);
    EXPECT_EQ(gfx::LiveObjects(), before_) << "objects left behind";
  }
  // What was written since the last call.
  std::string Take() { return std::exchange(journal, {}); }

 private:
  const std::size_t before_ = gfx::LiveObjects();  // counted before the context exists

 protected:
  std::string journal;
  HDC hdc = gfx::CreateJournalContext(journal);
};
