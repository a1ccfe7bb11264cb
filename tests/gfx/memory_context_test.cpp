#include <vector>

#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"
#include "tests/gfx/gdi_fixture.h"

namespace {

// A screen of 5 × 4 pixels, all different, behind a raster context.
class MemoryContext : public GdiTest {
 protected:
  MemoryContext() : surface(5, 4) {
    for (int y = 0; y < 4; ++y) {
      for (int x = 0; x < 5; ++x) surface.Row(y)[x] = Value(x, y);
    }
    screen = gfx::CreateRasterContext(surface, gfx::BuiltinText());
    memory = CreateCompatibleDC(screen);
    bitmap = CreateCompatibleBitmap(screen, 3, 2);
    SelectObject(memory, bitmap);
  }
  void TearDown() override {
    DeleteDC(memory);
    DeleteObject(bitmap);
    DeleteDC(screen);
    GdiTest::TearDown();
  }

  static std::uint32_t Value(int x, int y) {
    return 0x010203u * static_cast<std::uint32_t>(y * 5 + x + 1);
  }

  gfx::Surface surface;
  HDC screen = nullptr;
  HDC memory = nullptr;
  HBITMAP bitmap = nullptr;
};

TEST_F(MemoryContext, RowsComeBackInTheOrderOfTheHeader) {
  ASSERT_TRUE(BitBlt(memory, 0, 0, 3, 2, screen, 1, 1, SRCCOPY));
  for (const WORD depth : {WORD{24}, WORD{32}}) {
    for (const LONG height : {2, -2}) {
      const int bytes = depth / 8;
      const int stride = (3 * bytes + 3) / 4 * 4;
      BITMAPINFO info = DibInfo(3, height, depth);
      std::vector<BYTE> bits(static_cast<std::size_t>(2 * stride + 1), 0xCC);
      EXPECT_EQ(GetDIBits(screen, bitmap, 0, 2, bits.data(), &info, DIB_RGB_COLORS), 2);
      for (int y = 0; y < 2; ++y) {
        const BYTE* row = bits.data() + stride * (height > 0 ? 1 - y : y);
        for (int x = 0; x < 3; ++x) {
          const BYTE* pixel = row + x * bytes;
          const auto value = static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8 | pixel[2] << 16);
          EXPECT_EQ(value, Value(x + 1, y + 1)) << depth << " " << height << " " << x << "," << y;
        }
      }
      EXPECT_EQ(bits.back(), 0xCC) << "nothing behind the rows is written";
      // The second scan line only; then none.
      const std::vector<BYTE> all = bits;
      EXPECT_EQ(GetDIBits(screen, bitmap, 1, 9, bits.data(), &info, DIB_RGB_COLORS), 1);
      EXPECT_TRUE(std::equal(bits.begin(), bits.begin() + stride, all.begin() + stride));
      EXPECT_EQ(GetDIBits(screen, bitmap, 2, 1, bits.data(), &info, DIB_RGB_COLORS), 0);
    }
  }
}

TEST_F(MemoryContext, AHeaderLargerThanTheBitmapGetsZeroColumnsAndFewerRows) {
  BitBlt(memory, 0, 0, 3, 2, screen, 0, 0, SRCCOPY);
  BITMAPINFO info = DibInfo(5, -9, 32);
  std::vector<std::uint32_t> bits(5 * 9, 0xCCCCCCCC);
  EXPECT_EQ(GetDIBits(screen, bitmap, 0, 9, bits.data(), &info, DIB_RGB_COLORS), 2);
  EXPECT_EQ(std::vector<std::uint32_t>(bits.begin() + 5, bits.begin() + 11),
            (std::vector<std::uint32_t>{Value(0, 1), Value(1, 1), Value(2, 1), 0, 0, 0xCCCCCCCC}));
  EXPECT_EQ(GetDIBits(screen, bitmap, 0, 1, nullptr, &info, DIB_RGB_COLORS), 2);
  EXPECT_EQ(info.bmiHeader.biWidth, 3);
  EXPECT_EQ(info.bmiHeader.biHeight, 2);
  EXPECT_EQ(info.bmiHeader.biSizeImage, 24u);
  EXPECT_EQ(GetDIBits(nullptr, bitmap, 0, 1, bits.data(), &info, DIB_RGB_COLORS), 0);
  EXPECT_EQ(GetDIBits(screen, nullptr, 0, 1, bits.data(), &info, DIB_RGB_COLORS), 0);
}

TEST_F(MemoryContext, BlitMapsBothSides) {
  SetViewportOrgEx(screen, 2, 1, nullptr);
  SetViewportOrgEx(memory, 1, 0, nullptr);
  EXPECT_TRUE(BitBlt(memory, 0, 0, 1, 1, screen, 1, 1, SRCCOPY));
  EXPECT_TRUE(BitBlt(screen, -2, -1, 3, 2, memory, -1, 0, SRCCOPY));
  EXPECT_EQ(surface.Row(0)[1], Value(3, 2));
  EXPECT_EQ(surface.Row(0)[0], 0u) << "new bitmaps are black";
  EXPECT_EQ(surface.Row(0)[3], Value(3, 0));
  EXPECT_FALSE(BitBlt(screen, 0, 0, 1, 1, memory, 0, 0, 0x00660046));
  EXPECT_FALSE(BitBlt(screen, 0, 0, -1, 1, memory, 0, 0, SRCCOPY));
  // A journal has no pixels to give.
  const std::uint64_t before = surface.Hash();
  EXPECT_TRUE(BitBlt(screen, 0, 0, 2, 2, hdc, 0, 0, SRCCOPY));
  EXPECT_EQ(surface.Hash(), before);
}

TEST_F(MemoryContext, AnotherBitmapIsAnotherPicture) {
  const RECT box{0, 0, 9, 9};
  HBITMAP other = CreateCompatibleBitmap(memory, 3, 2);
  SaveDC(memory);
  EXPECT_EQ(SelectObject(memory, other), bitmap);
  FillRect(memory, &box, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  RestoreDC(memory, -1);
  BitBlt(screen, 0, 0, 1, 1, memory, 0, 0, SRCCOPY);
  EXPECT_EQ(surface.Pixel(0, 0), RGB(0, 0, 0));
  SelectObject(memory, other);
  BitBlt(screen, 0, 0, 1, 1, memory, 0, 0, SRCCOPY);
  EXPECT_EQ(surface.Pixel(0, 0), RGB(255, 255, 255));
  DeleteObject(other);
}

TEST_F(MemoryContext, MeasuresAsItsPartner) {
  HDC beside = CreateCompatibleDC(hdc);  // a journal's cells have no glyphs to draw
  EXPECT_EQ(&gfx::DriverOf(beside)->Text(), &gfx::BuiltinText());
  EXPECT_EQ(&gfx::DriverOf(memory)->Text(), &gfx::BuiltinText());
  gfx::TextEngine* previous = gfx::SetDisplayText(&gfx::BuiltinText());
  HDC alone = CreateCompatibleDC(nullptr);
  EXPECT_EQ(&gfx::DriverOf(alone)->Text(), &gfx::BuiltinText());
  gfx::SetDisplayText(previous);
  DeleteDC(alone);
  DeleteDC(beside);
}

}  // namespace
