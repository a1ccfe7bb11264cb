#include <cmath>
#include <map>

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
               {"\xB5g", U"µg"},  // Latin-1
               {"\xE2\x88\x92\xF0\x9F\x98\x80", U"\u2212\U0001F600"},
               {"\xE2\x88", U"\u00E2\u0088"},                                // cut short
               {"\xC0\x80\xE0\x80\x80", U"\u00C0\u0080\u00E0\u0080\u0080"},  // overlong
               {"\xED\xA0\x80", U"\u00ED\u00A0\u0080"},                      // surrogate
               {"\xF4\x90\x80\x80", U"\u00F4\u0090\u0080\u0080"},            // above U+10FFFF
               {"\xC3\xC3\xA5", U"\u00C3\u00E5"}};
  for (const auto& [bytes, codes] : texts) EXPECT_EQ(gfx::DecodeText(bytes), codes);
}

TEST(Turns, AreRotations) {
  for (LONG tenths = -3600; tenths <= 3600; ++tenths) {
    const gfx::Turn turn(tenths);
    const double angle = static_cast<double>(tenths) * 3.14159265358979323846 / 1800;
    EXPECT_NEAR(turn.Cosine(), std::cos(angle) * 0x1p30, 9) << tenths;
    EXPECT_NEAR(turn.Sine(), std::sin(angle) * 0x1p30, 9) << tenths;
  }
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
    {"CenterBaselineUp", TA_CENTER | TA_BASELINE, 900, {21, 18, 33, 30}},
    {"RightBaselineOver", TA_RIGHT | TA_BASELINE, -1800, {30, 21, 42, 33}},
    {"LeftTopDown", TA_LEFT | TA_TOP, 2700, {18, 24, 30, 36}}};
INSTANTIATE_TEST_SUITE_P(AlignAndTurn, Placement, testing::ValuesIn(kAlignAndTurnPlacement),
                         CaseName());

}  // namespace
