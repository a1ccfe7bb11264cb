#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"
#include "tests/gfx/gdi_fixture.h"

namespace {

// A screen of 5 × 4 pixels, all different, and a memory context with a bitmap of 3 × 2.
class MemoryContext : public GdiTest {
 protected:
  MemoryContext() : surface(5, 4) {
    for (int i = 0; i < 20; ++i) surface.Row(i / 5)[i % 5] = Value(i % 5, i / 5);
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
  HDC screen = gfx::CreateRasterContext(surface, gfx::BuiltinText());
  HDC memory = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateCompatibleBitmap(screen, 3, 2);
};

TEST_F(MemoryContext, RowsComeBackInTheOrderOfTheHeader) {
  ASSERT_TRUE(BitBlt(memory, 0, 0, 3, 2, screen, 1, 1, SRCCOPY));
  for (const auto& [depth, height] : {std::pair{24, 2}, {24, -2}, {32, 2}, {32, -2}}) {
    const int stride = 12;
    BITMAPINFO info = DibInfo(3, height, static_cast<WORD>(depth));
    std::vector<BYTE> bits(2 * stride + 1, 0xCC);
    EXPECT_EQ(GetDIBits(screen, bitmap, 0, 2, bits.data(), &info, DIB_RGB_COLORS), 2);
    for (int i = 0; i < 6; ++i) {
      const int row = height > 0 ? 1 - i / 3 : i / 3;
      const BYTE* pixel = bits.data() + stride * row + i % 3 * depth / 8;
      EXPECT_EQ(static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8 | pixel[2] << 16),
                Value(i % 3 + 1, i / 3 + 1))
          << depth << " " << height << " " << i;
    }
    EXPECT_EQ(bits.back(), 0xCC) << "nothing behind the rows is written";
    const std::vector<BYTE> second(bits.begin() + stride, bits.end() - 1);
    EXPECT_EQ(GetDIBits(screen, bitmap, 1, 9, bits.data(), &info, DIB_RGB_COLORS), 1);
    EXPECT_EQ(std::vector<BYTE>(bits.begin(), bits.begin() + stride), second);
    EXPECT_EQ(GetDIBits(screen, bitmap, 2, 1, bits.data(), &info, DIB_RGB_COLORS), 0);
  }
}

TEST_F(MemoryContext, BlitMapsBothSides) {
  SetViewportOrgEx(screen, 2, 1, nullptr);
  SetViewportOrgEx(memory, 1, 0, nullptr);
  EXPECT_TRUE(BitBlt(memory, 0, 0, 1, 1, screen, 1, 1, SRCCOPY));
  EXPECT_TRUE(BitBlt(screen, -2, -1, 3, 2, memory, -1, 0, SRCCOPY));
  EXPECT_EQ(surface.Row(0)[1], Value(3, 2));
  EXPECT_EQ(surface.Row(0)[0], 0u) << "new bitmaps are black";
  EXPECT_EQ(surface.Row(0)[3], Value(3, 0));
}

TEST(Surface, ExtentsAreLimited) {
  EXPECT_EQ(gfx::Surface(-3, 5).Width(), 0);
  EXPECT_EQ(gfx::Surface(1 << 20, 1 << 20).Width(), 0);
}

}  // namespace
