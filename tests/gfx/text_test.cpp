#include "tests/gfx/gdi_fixture.h"

namespace {

class CellMeasures : public GdiTest {};

TEST_F(CellMeasures, FollowTheLogicalFont) {
  struct {
    LONG height, width;
    LONG cell, line;
  } const fonts[] = {{-13, 0, 6, 13},
                     {13, 0, 6, 13},
                     {10, 7, 7, 10},
                     {10, -7, 7, 10},
                     {0, 0, 0, 0},
                     {-2147483647 - 1, 0, 1 << 30, 2147483647},
                     {1, 2147483647, 2147483647, 1}};
  for (const int mode : {MM_TEXT, MM_TWIPS}) {
    SetMapMode(hdc, mode);
    for (const auto& font : fonts) {
      Use(Font(font.height, font.width));
      SIZE size{};
      EXPECT_TRUE(GetTextExtentPoint32A(hdc, "x\xC3\xA9", 1, &size));
      EXPECT_EQ(size, (SIZE{font.cell, font.line}));
      EXPECT_TRUE(GetTextExtentPoint32A(hdc, "x\xC3\xA9", 3, &size));  // bytes, not letters
      EXPECT_EQ(size.cx, std::min<std::int64_t>(3 * std::int64_t{font.cell}, 2147483647));
      EXPECT_TRUE(GetTextExtentPoint32A(hdc, nullptr, 0, &size));
      EXPECT_EQ(size, (SIZE{0, font.line}));
      TEXTMETRICA metrics{};
      EXPECT_TRUE(GetTextMetricsA(hdc, &metrics));
      EXPECT_EQ(metrics.tmHeight, font.line);
      EXPECT_EQ(metrics.tmAscent, font.line);
      EXPECT_EQ(metrics.tmDescent, 0);
      EXPECT_EQ(metrics.tmAveCharWidth, font.cell);
    }
  }
}

TEST_F(CellMeasures, BadTextIsRefused) {
  SIZE size{3, 4};
  EXPECT_FALSE(GetTextExtentPoint32A(hdc, "x", -1, &size));
  EXPECT_FALSE(GetTextExtentPoint32A(hdc, nullptr, 1, &size));
  EXPECT_FALSE(GetTextExtentPoint32A(hdc, "x", 1, nullptr));
  EXPECT_FALSE(GetTextMetricsA(hdc, nullptr));
  EXPECT_FALSE(TextOutA(hdc, 0, 0, "x", -1));
  EXPECT_FALSE(TextOutA(hdc, 0, 0, nullptr, 1));
  EXPECT_EQ(size, (SIZE{3, 4}));
  EXPECT_EQ(journal, "");
}

// The current position after a run of four cells of 10, starting at (100, 100).
struct AdvanceCase {
  const char* name;
  UINT align;
  LONG escapement;
  int mode;
  POINT end;
};
class Advance : public GdiTest, public testing::WithParamInterface<AdvanceCase> {};

TEST_P(Advance, MovesAlongTheLine) {
  SetMapMode(hdc, GetParam().mode);
  Use(Font(20, 10, GetParam().escapement));
  SetTextAlign(hdc, GetParam().align);
  MoveToEx(hdc, 100, 100, nullptr);
  EXPECT_TRUE(TextOutA(hdc, 7, 8, "abcd", 4));
  EXPECT_EQ(Position(), GetParam().end);
  POINT at{100, 100};
  if ((GetParam().align & TA_UPDATECP) == 0) at = {7, 8};
  LPtoDP(hdc, &at, 1);
  EXPECT_EQ(journal.find("text " + std::to_string(at.x) + "," + std::to_string(at.y) + " \"abcd\""),
            0u);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Advance,
    testing::Values(AdvanceCase{"NotAsked", TA_LEFT, 0, MM_TEXT, {100, 100}},
                    AdvanceCase{"Left", TA_UPDATECP, 0, MM_TEXT, {140, 100}},
                    AdvanceCase{"Right", TA_UPDATECP | TA_RIGHT, 0, MM_TEXT, {60, 100}},
                    AdvanceCase{"Centred", TA_UPDATECP | TA_CENTER, 0, MM_TEXT, {100, 100}},
                    AdvanceCase{"Up", TA_UPDATECP, 900, MM_TEXT, {100, 60}},
                    AdvanceCase{"UpInTwips", TA_UPDATECP, 900, MM_TWIPS, {100, 140}},
                    AdvanceCase{"Back", TA_UPDATECP, -1800, MM_TEXT, {60, 100}},
                    AdvanceCase{
                        "Down", TA_UPDATECP | TA_BASELINE, 2700 + 3600, MM_TEXT, {100, 140}},
                    AdvanceCase{"Slant", TA_UPDATECP, 300, MM_TEXT, {135, 80}}),
    [](const auto& chosen) { return chosen.param.name; });

TEST_F(CellMeasures, AlignmentsReachTheDriverWithoutStrayBits) {
  struct {
    UINT set;
    const char* seen;
  } const cases[] = {{TA_UPDATECP | TA_RIGHT, "align=2 "},
                     {TA_CENTER | TA_BASELINE, "align=30 "},
                     {4, "align=0 "},
                     {16 | TA_RIGHT, "align=2 "},
                     {TA_BOTTOM | 0x100, "align=8 "},
                     {0xFFFFFFFF, "align=30 "}};
  for (const auto& c : cases) {
    journal.clear();
    SetTextAlign(hdc, c.set);
    EXPECT_EQ(GetTextAlign(hdc), c.set);
    TextOutA(hdc, 0, 0, "x", 1);
    EXPECT_NE(journal.find(c.seen), std::string::npos) << journal;
  }
}

}  // namespace
