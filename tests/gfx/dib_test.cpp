#include "platform/gfx/surface.h"
#include "tests/gfx/gdi_fixture.h"

namespace {

// An image of 4 × 3 pixels, all different.
std::uint32_t PixelAt(int x, int y) { return 0x102030u + static_cast<std::uint32_t>(y * 4 + x); }

// Bits per pixel; whether the bottom row is stored first.
class DibForms : public GdiTest, public testing::WithParamInterface<std::pair<int, bool>> {
 protected:
  DibForms() {
    for (int i = 0; i < 12; ++i) {
      const auto row = static_cast<std::size_t>(up ? 2 - i / 4 : i / 4);
      for (std::size_t part = 0; part < 3; ++part) {
        bits[row * stride + static_cast<std::size_t>(i % 4 * GetParam().first / 8) + part] =
            static_cast<BYTE>(PixelAt(i % 4, i / 4) >> 8 * part);
      }
    }
  }
  // The end of the journal's line for columns [left, right) and rows [top, bottom).
  static std::string Hash(int left, int top, int right, int bottom) {
    gfx::Surface part(right - left, bottom - top);
    for (int y = top; y < bottom; ++y) {
      for (int x = left; x < right; ++x) part.Row(y - top)[x - left] = PixelAt(x, y);
    }
    char text[40];
    const auto hash = static_cast<unsigned long long>(part.Hash());
    std::snprintf(text, sizeof text, " hash=%016llx clip=none\n", hash);
    return text;
  }
  // Shows `width` × `height` pixels from (sourceX, sourceY); `given` scan lines from `first` on.
  int Show(DWORD width, DWORD height, int sourceX, int sourceY, UINT first = 0, UINT given = 3) {
    return SetDIBitsToDevice(hdc, 50, 60, width, height, sourceX, sourceY, first, given,
                             bits.data() + first % 3 * stride, &info, DIB_RGB_COLORS);
  }
  int Stretch(int width, int height, int sourceX, int sourceWidth, int sourceHeight) {
    return StretchDIBits(hdc, 5, 6, width, height, sourceX, 0, sourceWidth, sourceHeight,
                         bits.data(), &info, DIB_RGB_COLORS, SRCCOPY);
  }

  const bool up = GetParam().second;
  const std::size_t stride = GetParam().first / 8 * 4;
  std::vector<BYTE> bits = std::vector<BYTE>(3 * stride, 0xCC);
  BITMAPINFO info = DibInfo(4, up ? 3 : -3, static_cast<WORD>(GetParam().first));
};

TEST_P(DibForms, ThePartShownIsRightWayUp) {
  EXPECT_EQ(Show(4, 3, 0, 0), 3);
  EXPECT_EQ(Take(), "dib 50,60 4,3" + Hash(0, 0, 4, 3));
  EXPECT_EQ(Show(2, 2, 1, 0), 2);  // the two rows nearest the origin
  EXPECT_EQ(Take(), "dib 50,60 2,2" + (up ? Hash(1, 1, 3, 3) : Hash(1, 0, 3, 2)));
}

TEST_P(DibForms, WhatDoesNotExistIsLeftOut) {
  // One column and one row before the image, more than it has behind it.
  EXPECT_EQ(Show(9, 9, -1, -1, 0, 99), 3);
  EXPECT_EQ(Take(), (up ? "dib 51,65 4,3" : "dib 51,61 4,3") + Hash(0, 0, 4, 3));
  EXPECT_EQ(Show(4, 3, 0, 0, 1, 1), 1);  // only the middle scan line is given
  EXPECT_EQ(Take(), "dib 50,61 4,1" + Hash(0, 1, 4, 2));
  EXPECT_EQ(Show(0xFFFFFFFF, 0xFFFFFFFF, 3, 2, 2, 0xFFFFFFFF), 1);
  EXPECT_EQ(Take(),
            up ? "dib 50,2147483647 1,1" + Hash(3, 0, 4, 1) : "dib 50,60 1,1" + Hash(3, 2, 4, 3));
  for (const int far : {4, kMax, kMin}) EXPECT_EQ(Show(4, 3, far, 0) + Show(4, 3, 0, far), 0);
  EXPECT_EQ(Show(4, 3, 0, 0, 0xFFFFFFFF) + Show(4, 0, 0, 0) + Show(4, 3, 0, 0, 0, 0), 0);
  EXPECT_EQ(Take(), "");
}

TEST_P(DibForms, StretchCountsFromTheTop) {
  EXPECT_EQ(Stretch(40, 20, 1, 2, 2), 2);
  EXPECT_EQ(Take(), (up ? "stretch 5,6 40,20 from 1,1 2,2" : "stretch 5,6 40,20 from 1,0 2,2") +
                        Hash(0, 0, 4, 3));
  // 8 source columns on 80 pixels, of which columns 2 … 5 exist as 0 … 3.
  EXPECT_EQ(Stretch(80, 30, -2, 8, 3), 3);
  EXPECT_EQ(Take(), "stretch 25,6 40,30 from 0,0 4,3" + Hash(0, 0, 4, 3));
  EXPECT_EQ(Stretch(3, 3, -kMax, kMax, 3) + Stretch(-4, 3, 0, 4, 3) + Stretch(4, 3, 0, 4, 0), 0);
  SetViewportOrgEx(hdc, kMax, 0, nullptr);
  EXPECT_EQ(Stretch(4, 3, 0, 4, 3), 0) << "no pixel of it remains";
  EXPECT_EQ(Take(), "");
}

INSTANTIATE_TEST_SUITE_P(Storages, DibForms,
                         testing::Values(std::pair{24, false}, std::pair{24, true},
                                         std::pair{32, false}, std::pair{32, true}));

class DibHeader : public GdiTest {};

TEST_F(DibHeader, MalformedOnesAreRefused) {
  const BITMAPINFO good = DibInfo(2, 2);
  // 2^31 × 2^31 × 4 bytes are more than any address space counts in ptrdiff_t.
  std::vector<BITMAPINFO> infos{DibInfo(0, 2),
                                DibInfo(-2, 2),
                                DibInfo(kMin, 2),
                                DibInfo(2, kMin),
                                DibInfo(kMax, kMax, 32),
                                DibInfo(2, 2, 8),
                                good,
                                good,
                                good};
  infos[6].bmiHeader.biSize = 39;
  infos[7].bmiHeader.biCompression = 3;
  HBITMAP bitmap = CreateCompatibleBitmap(hdc, 2, 2);
  BYTE bits[64] = {};
  for (BITMAPINFO& info : infos) {
    const int rows = &info == &infos.back() ? 2 : 0;  // the last one is good
    EXPECT_EQ(SetDIBitsToDevice(hdc, 0, 0, 2, 2, 0, 0, 0, 2, bits, &info, DIB_RGB_COLORS), rows);
    EXPECT_EQ(StretchDIBits(hdc, 0, 0, 2, 2, 0, 0, 2, 2, bits, &info, 0, SRCCOPY), rows);
    EXPECT_EQ(GetDIBits(hdc, bitmap, 0, 2, bits, &info, DIB_RGB_COLORS), rows);
  }
  DeleteObject(bitmap);
}

}  // namespace
