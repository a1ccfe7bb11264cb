#include <map>
#include <string>

#include "platform/gfx/builtin_glyphs.h"
#include "platform/gfx/turn.h"
#include "tests/gfx/raster_fixture.h"
#include "tests/support/case_name.h"

namespace {

gfx::Font BuiltinFont(LONG height, LONG width = 0, LONG escapement = 0) {
  gfx::Font font{};
  font.height = font.logical.lfHeight = height;
  font.width = font.logical.lfWidth = width;
  font.logical.lfEscapement = escapement;
  return font;
}

TEST(DecodedText, IsUtf8AndLatin1ForTheRest) {
  const struct {
    const char* bytes;
    const char32_t* codes;
  } texts[] = {{"\xC2\xB5g/mL", U"µg/mL"},
               {"\xB5g \xB0"
                "C",
                U"µg °C"},  // Latin-1
               {"\xE2\x88\x92\xF0\x9F\x98\x80", U"\u2212\U0001F600"},
               {"\xC3", U"\u00C3"},  // cut short
               {"\xE2\x88", U"\u00E2\u0088"},
               {"\xC0\x80\xE0\x80\x80", U"\u00C0\u0080\u00E0\u0080\u0080"},  // overlong
               {"\xED\xA0\x80", U"\u00ED\u00A0\u0080"},                      // surrogate
               {"\xF4\x90\x80\x80", U"\u00F4\u0090\u0080\u0080"},            // above U+10FFFF
               {"\xFF\x41", U"\u00FF\u0041"},
               {"\xC3\xC3\xA5", U"\u00C3\u00E5"}};
  for (const auto& [bytes, codes] : texts) EXPECT_EQ(gfx::DecodeText(bytes), codes);
}

TEST(Turns, AreRotationsExactAtQuarters) {
  for (LONG tenths = -3600; tenths <= 3600; ++tenths) {
    const gfx::Turn turn(tenths);
    const std::int64_t c = turn.Cosine(), s = turn.Sine();
    EXPECT_NEAR(static_cast<double>(c * c + s * s), 0x1p60, 0x1p35) << tenths;
    // Adding ten steps of a tenth is one step of a degree, to rounding.
    const gfx::Turn sum(tenths + 300);
    const std::int64_t c30 = 929887697, s30 = 1 << 29;  // cosine and sine of 30 degrees
    EXPECT_NEAR(static_cast<double>(sum.Cosine()), static_cast<double>((c * c30 - s * s30) >> 30),
                9);
    EXPECT_EQ(turn.Quarters() >= 0, tenths % 900 == 0) << tenths;
  }
  EXPECT_EQ(gfx::Turn(900).Quarters(), 1);
  EXPECT_EQ(gfx::Turn(-900).Quarters(), 3);
  EXPECT_EQ(gfx::Turn(INT32_MIN).Quarters(), gfx::Turn(INT32_MIN % 3600).Quarters());
}

TEST(BuiltinFont, HasADifferentGlyphForEveryCharacter) {
  std::map<gfx::GlyphBits, char32_t> seen;
  const gfx::GlyphBits box = gfx::BuiltinGlyph(0xFFFD);
  for (char32_t code = 0x20; code < 0x100; code = code == 0x7E ? 0xA0 : code + 1) {
    const gfx::GlyphBits bits = gfx::BuiltinGlyph(code);
    EXPECT_NE(bits, box) << static_cast<int>(code);
    for (const std::uint8_t row : bits) EXPECT_EQ(row >> 5, 0) << "the gap between letters";
    if (code == 0xA0 || code == 0xAD) continue;  // drawn as space and hyphen
    const auto [place, isNew] = seen.try_emplace(bits, code);
    EXPECT_TRUE(isNew) << static_cast<int>(code) << " looks like "
                       << static_cast<int>(place->second);
  }
  EXPECT_EQ(gfx::BuiltinGlyph(0x2212), gfx::BuiltinGlyph('-'));
  EXPECT_EQ(gfx::BuiltinGlyph(0x4E00), box);
}

TEST(BuiltinFont, MeasuresInWholeMultiples) {
  const struct {
    LONG height, width;
    SIZE letter;
  } sizes[] = {{0, 0, {6, 12}},    {12, 0, {6, 12}},
               {23, 0, {6, 12}},   {24, 0, {12, 24}},
               {3, 0, {6, 12}},    {-10, 0, {6, 12}},
               {-20, 0, {12, 24}}, {12, 13, {12, 12}},
               {36, -6, {6, 36}},  {INT32_MIN, INT32_MIN, {768, 1536}}};
  for (const auto& [height, width, letter] : sizes) {
    const gfx::Font font = BuiltinFont(height, width, 333);
    const SIZE extent = gfx::BuiltinText().Extent(font, "\xC3\x85x");
    const TEXTMETRICA metrics = gfx::BuiltinText().Metrics(font);
    EXPECT_EQ(extent.cx, 2 * letter.cx) << height;
    EXPECT_EQ(extent.cy, letter.cy) << height;
    EXPECT_EQ(metrics.tmAscent + metrics.tmDescent, letter.cy);
    EXPECT_EQ(metrics.tmHeight, letter.cy);
    EXPECT_EQ(metrics.tmAveCharWidth, letter.cx);
  }
}

// Cells of "ab" (12 × 12, ascent 9) with the reference point at 30,24.
struct PlacementCase {
  const char* name;
  UINT align;
  LONG escapement;
  RECT cell;
};
class Placement : public testing::TestWithParam<PlacementCase> {};
TEST_P(Placement, OfTheBackgroundCell) {
  const PlacementCase& c = GetParam();
  Picture got;
  const gfx::Font font = BuiltinFont(12, 0, c.escapement);
  got.driver->TextOut({{30, 24}, "ab", font, kPaint, c.align, OPAQUE, kPaint}, nullptr);
  EXPECT_EQ(BoxOf(got.surface, kPaint), c.cell);
  Picture clear;
  clear.driver->TextOut({{30, 24}, "ab", font, kPaint, c.align, TRANSPARENT, kPaint}, nullptr);
  const RECT ink = BoxOf(clear.surface, kPaint);
  EXPECT_TRUE(ink.left >= c.cell.left && ink.top >= c.cell.top && ink.right <= c.cell.right &&
              ink.bottom <= c.cell.bottom);
}
const PlacementCase kAlignAndTurnPlacement[] = {
    {"LeftTop", TA_LEFT | TA_TOP, 0, {30, 24, 42, 36}},
    {"RightBaseline", TA_RIGHT | TA_BASELINE, 0, {18, 15, 30, 27}},
    {"LeftBottom", TA_LEFT | TA_BOTTOM, 0, {30, 12, 42, 24}},
    {"LeftTopUp", TA_LEFT | TA_TOP, 900, {30, 12, 42, 24}},
    {"LeftBottomUp", TA_LEFT | TA_BOTTOM, 900, {18, 12, 30, 24}},
    {"CenterBaselineUp", TA_CENTER | TA_BASELINE, 900, {21, 18, 33, 30}},
    {"RightBaselineOver", TA_RIGHT | TA_BASELINE, -1800, {30, 21, 42, 33}},
    {"LeftTopDown", TA_LEFT | TA_TOP, 2700, {18, 24, 30, 36}},
    {"UpdateBitIsNotLooked", TA_RIGHT | TA_UPDATECP, 0, {18, 24, 30, 36}}};
INSTANTIATE_TEST_SUITE_P(AlignAndTurn, Placement, testing::ValuesIn(kAlignAndTurnPlacement),
                         CaseName());

TEST(BuiltinFont, TurnsExactlyByQuarters) {
  for (int size = 1; size < 3; ++size) {
    const auto draw = [&](LONG escapement) {
      Picture picture(101, 101);
      gfx::Font font = BuiltinFont(12 * size, 0, escapement);
      font.logical.lfWeight = FW_BOLD;
      font.logical.lfUnderline = font.logical.lfStrikeOut = 1;
      picture.driver->TextOut({{50, 50}, "Rk", font, kInk, TA_LEFT | TA_TOP, OPAQUE, kPaint},
                              nullptr);
      return picture.surface;
    };
    const gfx::Surface plain = draw(0), up = draw(900), over = draw(1800), down = draw(2700);
    EXPECT_EQ(BoxOf(plain, kInk).left, 50);
    // About the corner between pixels 49 and 50.
    for (int y = 0; y < 100; ++y) {
      for (int x = 0; x < 100; ++x) {
        ASSERT_EQ(up.Pixel(y, 99 - x), plain.Pixel(x, y)) << x << ',' << y;
        ASSERT_EQ(over.Pixel(99 - x, 99 - y), plain.Pixel(x, y)) << x << ',' << y;
        ASSERT_EQ(down.Pixel(99 - y, x), plain.Pixel(x, y)) << x << ',' << y;
      }
    }
  }
}

TEST(BuiltinFont, KeepsItsInkAtAnyAngle) {
  for (LONG escapement = 5; escapement < 3600; escapement += 10) {
    std::int64_t ink = 0;
    gfx::BuiltinText().Render(BuiltinFont(12, 0, escapement), "\xEF\xBF\xBD", {0, 0},
                              [&](const gfx::GlyphImage& glyph) {
                                for (int i = 0; i < glyph.width * glyph.height; ++i) {
                                  ink += glyph.coverage[i];
                                }
                              });
    // The box has 5 × 9 pixels of which 3 × 7 are empty.
    EXPECT_NEAR(static_cast<double>(ink) / 255, 24, 1) << escapement;
  }
}

TEST(RasterText, FarAwayIsHarmless) {
  Picture got;
  const std::string text(3000, 'm');
  for (const LONG x : {INT32_MIN, INT32_MAX, -9000, 0}) {
    for (const LONG escapement : {0, 900, 450, 2700}) {
      const gfx::Font font = BuiltinFont(INT32_MAX, INT32_MIN, escapement);
      got.driver->TextOut({{x, x}, text, font, kInk, TA_RIGHT, OPAQUE, kPaint}, nullptr);
    }
  }
  EXPECT_NE(BoxOf(got.surface, kPaint).right, 0);  // the one that reaches the picture
}

}  // namespace
