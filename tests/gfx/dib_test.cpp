#include <cstring>
#include <vector>

#include "platform/gfx/surface.h"
#include "tests/gfx/gdi_fixture.h"

namespace {

// An image of 4 × 3 pixels; the pixel in column x, row y (from the top) has red 10 × y + x.
constexpr int kWidth = 4;
constexpr int kHeight = 3;
COLORREF PixelAt(int x, int y) {
  return RGB(static_cast<BYTE>(10 * y + x), 77, static_cast<BYTE>(x * 3));
}

struct Storage {
  const char* name;
  WORD bits;
  bool bottomUp;
};

class DibForms : public testing::TestWithParam<Storage> {
 protected:
  DibForms() : info(DibInfo(kWidth, GetParam().bottomUp ? kHeight : -kHeight, GetParam().bits)) {
    const int bytes = GetParam().bits / 8;
    stride = (kWidth * bytes + 3) / 4 * 4;
    bits.assign(static_cast<std::size_t>(stride * kHeight), 0xCC);
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        BYTE* pixel = Row(y) + x * bytes;
        pixel[0] = GetBValue(PixelAt(x, y));
        pixel[1] = GetGValue(PixelAt(x, y));
        pixel[2] = GetRValue(PixelAt(x, y));
      }
    }
  }
  ~DibForms() override { DeleteDC(hdc); }

  BYTE* Row(int y) { return bits.data() + stride * (GetParam().bottomUp ? kHeight - 1 - y : y); }

  // The journal's line for columns [left, right) and rows [top, bottom) shown at (x, y).
  static std::string Shown(int x, int y, int left, int top, int right, int bottom) {
    return "dib " + std::to_string(x) + "," + std::to_string(y) + " " +
           std::to_string(right - left) + "," + std::to_string(bottom - top) +
           " hash=" + Hash(left, top, right, bottom) + " clip=none\n";
  }
  static std::string Hash(int left, int top, int right, int bottom) {
    gfx::Surface surface(right - left, bottom - top);
    for (int y = top; y < bottom; ++y) {
      for (int x = left; x < right; ++x)
        surface.Row(y - top)[x - left] = gfx::PixelOf(PixelAt(x, y));
    }
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(surface.Hash()));
    return text;
  }

  std::string journal;
  HDC hdc = gfx::CreateJournalContext(journal);
  BITMAPINFO info;
  std::ptrdiff_t stride;
  std::vector<BYTE> bits;
};

TEST_P(DibForms, ThePartShownIsRightWayUp) {
  // Asked for: source origin, extent; in the form's own counting of rows.
  const bool up = GetParam().bottomUp;
  EXPECT_EQ(SetDIBitsToDevice(hdc, 50, 60, 4, 3, 0, 0, 0, 3, bits.data(), &info, 0), 3);
  EXPECT_EQ(journal, Shown(50, 60, 0, 0, 4, 3));
  journal.clear();
  // Two columns and two rows from (1, 0): the two rows nearest the origin.
  EXPECT_EQ(SetDIBitsToDevice(hdc, 50, 60, 2, 2, 1, 0, 0, 3, bits.data(), &info, 0), 2);
  EXPECT_EQ(journal, up ? Shown(50, 60, 1, 1, 3, 3) : Shown(50, 60, 1, 0, 3, 2));
}

TEST_P(DibForms, WhatDoesNotExistIsLeftOut) {
  const bool up = GetParam().bottomUp;
  // One column and one row before the image, more than it has behind it.
  EXPECT_EQ(SetDIBitsToDevice(hdc, 50, 60, 9, 9, -1, -1, 0, 99, bits.data(), &info, 0), 3);
  EXPECT_EQ(journal, up ? Shown(51, 65, 0, 0, 4, 3) : Shown(51, 61, 0, 0, 4, 3));
  journal.clear();
  // Of `bits` only the middle scan line is given.
  EXPECT_EQ(SetDIBitsToDevice(hdc, 0, 0, 4, 3, 0, 0, 1, 1, Row(1), &info, 0), 1);
  EXPECT_EQ(journal, Shown(0, 1, 0, 1, 4, 2));
  journal.clear();
  EXPECT_EQ(SetDIBitsToDevice(hdc, 0, 0, 0xFFFFFFFF, 0xFFFFFFFF, 3, 2, 2, 0xFFFFFFFF,
                              up ? Row(0) : Row(2), &info, 0),
            1);
  EXPECT_EQ(journal, up ? Shown(0, 2147483647, 3, 0, 4, 1) : Shown(0, 0, 3, 2, 4, 3));
  journal.clear();
  for (const int far : {4, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(SetDIBitsToDevice(hdc, 0, 0, 4, 3, far, 0, 0, 3, bits.data(), &info, 0), 0);
    EXPECT_EQ(SetDIBitsToDevice(hdc, 0, 0, 4, 3, 0, far, 0, 3, bits.data(), &info, 0), 0);
  }
  EXPECT_EQ(SetDIBitsToDevice(hdc, 0, 0, 4, 3, 0, 0, 0xFFFFFFFF, 3, bits.data(), &info, 0), 0);
  EXPECT_EQ(SetDIBitsToDevice(hdc, 0, 0, 4, 0, 0, 0, 0, 3, bits.data(), &info, 0), 0);
  EXPECT_EQ(journal, "");
}

TEST_P(DibForms, StretchCountsFromTheTop) {
  const auto line = [](const char* place) {
    return "stretch " + std::string(place) + " hash=" + Hash(0, 0, 4, 3) + " clip=none\n";
  };
  const bool up = GetParam().bottomUp;
  EXPECT_EQ(StretchDIBits(hdc, 5, 6, 40, 20, 1, 0, 2, 2, bits.data(), &info, 0, SRCCOPY), 2);
  EXPECT_EQ(journal, line(up ? "5,6 40,20 from 1,1 2,2" : "5,6 40,20 from 1,0 2,2"));
  journal.clear();
  // 8 source columns on 80 pixels, of which columns 2 … 5 exist as 0 … 3.
  EXPECT_EQ(StretchDIBits(hdc, 0, 0, 80, 30, -2, 0, 8, 3, bits.data(), &info, 0, SRCCOPY), 3);
  EXPECT_EQ(journal, line("20,0 40,30 from 0,0 4,3"));
  journal.clear();
  const int big = 2147483647;
  EXPECT_EQ(StretchDIBits(hdc, 0, 0, 3, 3, -big, 0, big, 3, bits.data(), &info, 0, SRCCOPY), 0);
  EXPECT_EQ(StretchDIBits(hdc, 0, 0, -4, 3, 0, 0, 4, 3, bits.data(), &info, 0, SRCCOPY), 0);
  EXPECT_EQ(StretchDIBits(hdc, 0, 0, 4, 3, 0, 0, 4, 0, bits.data(), &info, 0, SRCCOPY), 0);
  EXPECT_EQ(StretchDIBits(hdc, 0, 0, 4, 3, 0, 0, 4, 3, bits.data(), &info, 0, 0x00660046), 0);
  EXPECT_EQ(StretchDIBits(hdc, big, big, big, big, 0, 0, 4, 3, bits.data(), &info, 0, SRCCOPY), 0);
  EXPECT_EQ(journal, "") << "nothing of it remains";
}

INSTANTIATE_TEST_SUITE_P(Storages, DibForms,
                         testing::Values(Storage{"TopDown24", 24, false},
                                         Storage{"BottomUp24", 24, true},
                                         Storage{"TopDown32", 32, false},
                                         Storage{"BottomUp32", 32, true}),
                         [](const auto& chosen) { return chosen.param.name; });

class DibHeader : public GdiTest {};

TEST_F(DibHeader, MalformedOnesAreRefused) {
  const BYTE bits[64] = {};
  const auto refused = [&](BITMAPINFO info) {
    HBITMAP bitmap = CreateCompatibleBitmap(hdc, 2, 2);
    BYTE out[64];
    const int results =
        SetDIBitsToDevice(hdc, 0, 0, 2, 2, 0, 0, 0, 2, bits, &info, DIB_RGB_COLORS) +
        StretchDIBits(hdc, 0, 0, 2, 2, 0, 0, 2, 2, bits, &info, DIB_RGB_COLORS, SRCCOPY) +
        GetDIBits(hdc, bitmap, 0, 2, out, &info, DIB_RGB_COLORS);
    DeleteObject(bitmap);
    return results == 0;
  };
  BITMAPINFO info = DibInfo(2, 2);
  EXPECT_FALSE(refused(info));
  info.bmiHeader.biSize = 39;
  EXPECT_TRUE(refused(info));
  info = DibInfo(2, 2);
  info.bmiHeader.biPlanes = 0;
  EXPECT_TRUE(refused(info));
  info = DibInfo(2, 2);
  info.bmiHeader.biCompression = 3;
  EXPECT_TRUE(refused(info));
  for (const WORD depth : {0, 1, 8, 16, 25, 64}) EXPECT_TRUE(refused(DibInfo(2, 2, depth)));
  for (const LONG extent : {0, -2147483647 - 1}) {
    EXPECT_TRUE(refused(DibInfo(extent, 2)));
    EXPECT_TRUE(refused(DibInfo(2, extent)));
  }
  EXPECT_TRUE(refused(DibInfo(-2, 2)));
  // 2^31 × 2^31 × 4 bytes are more than an address space of 64 bits counts in ptrdiff_t.
  EXPECT_TRUE(refused(DibInfo(2147483647, 2147483647, 32)));
  info = DibInfo(2, 2);
  EXPECT_EQ(SetDIBitsToDevice(hdc, 0, 0, 2, 2, 0, 0, 0, 2, nullptr, &info, 0), 0);
  EXPECT_EQ(SetDIBitsToDevice(hdc, 0, 0, 2, 2, 0, 0, 0, 2, bits, nullptr, 0), 0);
  EXPECT_EQ(SetDIBitsToDevice(hdc, 0, 0, 2, 2, 0, 0, 0, 2, bits, &info, 1), 0);
}

}  // namespace
