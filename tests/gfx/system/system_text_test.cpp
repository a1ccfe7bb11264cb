#include <cstring>
#include <string>

#include "tests/gfx/raster_fixture.h"

namespace {

gfx::Font SystemFont(const char* family, LONG height, LONG width = 0, LONG escapement = 0) {
  gfx::Font font{};
  font.height = font.logical.lfHeight = height;
  font.width = font.logical.lfWidth = width;
  font.logical.lfEscapement = escapement;
  std::strncpy(font.logical.lfFaceName, family, LF_FACESIZE - 1);
  return font;
}

// A machine without any scalable font has the built-in one here, which other tests cover.
class SystemFonts : public testing::Test {
 protected:
  void SetUp() override {
    if (&text == &gfx::BuiltinText()) GTEST_SKIP() << "this machine has no fonts";
  }
  gfx::Surface Draw(const gfx::Font& font, const char* what, POINT at = {150, 150}) {
    gfx::Surface surface(300, 300);
    gfx::MakeRasterDriver(surface, text)
        ->TextOut({at, what, font, RGB(0, 0, 0), TA_LEFT | TA_TOP, TRANSPARENT, 0}, nullptr);
    return surface;
  }
  static std::int64_t Darkness(const gfx::Surface& surface) {
    std::int64_t sum = 0;
    for (int y = 0; y < surface.Height(); ++y) {
      for (int x = 0; x < surface.Width(); ++x) sum += 255 - GetRValue(surface.Pixel(x, y));
    }
    return sum;
  }

  gfx::TextEngine& text = gfx::SystemText();
};

TEST_F(SystemFonts, HeightsAndWidthsAreAsAsked) {
  for (const char* family : {"Times New Roman", "Arial", "", "no such family"}) {
    for (const LONG height : {1, 8, 15, 40, 333}) {
      const TEXTMETRICA cell = text.Metrics(SystemFont(family, height));
      EXPECT_EQ(cell.tmHeight, height);
      EXPECT_EQ(cell.tmAscent + cell.tmDescent, height);
      EXPECT_GT(cell.tmAveCharWidth, 0);
      const TEXTMETRICA em = text.Metrics(SystemFont(family, -height));
      EXPECT_EQ(em.tmHeight - em.tmInternalLeading, height);
    }
    EXPECT_EQ(text.Metrics(SystemFont(family, 40, 31)).tmAveCharWidth, 31);
  }
  for (const LONG height : {INT32_MIN, INT32_MAX}) {
    EXPECT_GE(text.Metrics(SystemFont("", height, height)).tmHeight, 2000);
  }
}

TEST_F(SystemFonts, ExtentsAddUpAndHoldTheInk) {
  const gfx::Font font = SystemFont("Times New Roman", 30);
  const LONG whole = text.Extent(font, "Detector 254 nm").cx;
  EXPECT_NEAR(text.Extent(font, "Detector").cx + text.Extent(font, " 254 nm").cx, whole, 1);
  EXPECT_EQ(text.Extent(font, "\xC2\xB5").cx, text.Extent(font, "\xB5").cx);
  gfx::Surface surface = Draw(font, "Hxnm", {20, 100});
  RECT ink{300, 300, 0, 0};
  for (int i = 0; i < 300 * 300; ++i) {
    const LONG x = i % 300, y = i / 300;
    if (surface.Pixel(x, y) == kWhite) continue;
    ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1), y + 1};
  }
  EXPECT_GE(ink.left, 19);
  EXPECT_LE(ink.right, 21 + text.Extent(font, "Hxnm").cx);
  EXPECT_EQ(ink.bottom, 100 + text.Metrics(font).tmAscent);  // stands on the baseline, crisply
  EXPECT_GE(ink.top, 100);
}

TEST_F(SystemFonts, TimesIsASerifAndStylesDiffer) {
  const auto look = [&](const char* family, LONG weight, BYTE italic) {
    gfx::Font font = SystemFont(family, 40);
    font.logical.lfWeight = weight;
    font.logical.lfItalic = italic;
    return Draw(font, "Ilm", {20, 20});
  };
  const gfx::Surface plain = look("Times New Roman", FW_NORMAL, 0);
  EXPECT_FALSE(SamePixels(plain, look("Arial", FW_NORMAL, 0)));
  EXPECT_FALSE(SamePixels(plain, look("Times New Roman", FW_NORMAL, 1)));
  EXPECT_GT(Darkness(look("Times New Roman", FW_BOLD, 0)), Darkness(plain) * 11 / 10);
}

TEST_F(SystemFonts, QuartersTurnThePixels) {
  const auto draw = [&](LONG escapement) {
    return Draw(SystemFont("Times New Roman", 15, 0, escapement), "Absorbance [mAU]");
  };
  const gfx::Surface plain = draw(0), up = draw(900), over = draw(1800), down = draw(-900);
  EXPECT_GT(Darkness(plain), 0);
  for (int y = 0; y < 300; ++y) {
    for (int x = 0; x < 300; ++x) {
      ASSERT_EQ(up.Pixel(y, 299 - x), plain.Pixel(x, y));
      ASSERT_EQ(over.Pixel(299 - x, 299 - y), plain.Pixel(x, y));
      ASSERT_EQ(down.Pixel(299 - y, x), plain.Pixel(x, y));
    }
  }
}

TEST_F(SystemFonts, NothingIsLeftBlank) {
  const gfx::Font font = SystemFont("Times New Roman", 20);
  // Lambda, a snowman, and a character of private use that nobody has.
  for (const char* letter : {"\xCE\xBB", "\xE2\x98\x83", "\xF3\xB0\x80\x80"}) {
    EXPECT_GT(Darkness(Draw(font, letter)), 0);
  }
}

}  // namespace
