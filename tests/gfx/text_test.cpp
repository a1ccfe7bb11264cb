#include <algorithm>

#include "tests/gfx/gdi_fixture.h"

namespace {

class Text : public GdiTest {};

TEST_F(Text, CellsFollowTheLogicalFontInEveryMapMode) {
  struct {
    LONG height, width, cell, line;
  } const fonts[] = {{-13, 0, 6, 13}, {13, 0, 6, 13},     {10, 7, 7, 10},          {10, -7, 7, 10},
                     {0, 0, 0, 0},    {1, kMax, kMax, 1}, {kMin, 0, 1 << 30, kMax}};
  for (const int mode : {MM_TEXT, MM_TWIPS}) {
    SetMapMode(hdc, mode);
    for (const auto& font : fonts) {
      Use(hdc, NewFont(font.height, font.width));
      SIZE size{};
      EXPECT_TRUE(GetTextExtentPoint32A(hdc, "x\xC3\xA9", 3, &size));  // bytes, not letters
      EXPECT_EQ(size.cx, std::min<std::int64_t>(3 * std::int64_t{font.cell}, kMax));
      EXPECT_TRUE(GetTextExtentPoint32A(hdc, nullptr, 0, &size));
      EXPECT_EQ(Of(size), (Numbers{0, font.line}));
      TEXTMETRICA metrics{};
      EXPECT_TRUE(GetTextMetricsA(hdc, &metrics));
      EXPECT_EQ(
          (Numbers{metrics.tmHeight, metrics.tmAscent, metrics.tmDescent, metrics.tmAveCharWidth}),
          (Numbers{font.line, font.line, 0, font.cell}));
    }
  }
}

TEST_F(Text, BadTextIsRefused) {
  SIZE size{3, 4};
  EXPECT_FALSE(GetTextExtentPoint32A(hdc, "x", -1, &size));
  EXPECT_FALSE(GetTextExtentPoint32A(hdc, nullptr, 1, &size));
  EXPECT_FALSE(GetTextExtentPoint32A(hdc, "x", 1, nullptr) | GetTextMetricsA(hdc, nullptr));
  EXPECT_FALSE(TextOutA(hdc, 0, 0, "x", -1) | TextOutA(hdc, 0, 0, nullptr, 1));
  EXPECT_EQ(Of(size), (Numbers{3, 4}));
  EXPECT_EQ(journal, "");
}

TEST_F(Text, UpdatingMovesThePositionAlongTheLine) {
  struct {
    UINT align;
    LONG escapement;
    int mode;
    POINT end;  // of four cells of 10 from (100, 100)
  } const cases[] = {{TA_LEFT, 0, MM_TEXT, {100, 100}},
                     {TA_UPDATECP, 0, MM_TEXT, {140, 100}},
                     {TA_UPDATECP | TA_RIGHT, 0, MM_TEXT, {60, 100}},
                     {TA_UPDATECP | TA_CENTER, 0, MM_TEXT, {100, 100}},
                     {TA_UPDATECP, 900, MM_TEXT, {100, 60}},
                     {TA_UPDATECP, 900, MM_TWIPS, {100, 140}},
                     {TA_UPDATECP, -1800, MM_TEXT, {60, 100}},
                     {TA_UPDATECP | TA_BASELINE, 2700 + 3600, MM_TEXT, {100, 140}},
                     {TA_UPDATECP, 300, MM_TEXT, {135, 80}}};
  for (const auto& c : cases) {
    SetMapMode(hdc, c.mode);
    Use(hdc, NewFont(20, 10, c.escapement));
    SetTextAlign(hdc, c.align);
    MoveToEx(hdc, 100, 100, nullptr);
    EXPECT_TRUE(TextOutA(hdc, 15, 30, "abcd", 4));
    POINT end{};
    MoveToEx(hdc, 0, 0, &end);
    EXPECT_EQ(Of(end), Of(c.end)) << journal;
    const bool there = Take().find("text 100,100 ") == 0;
    EXPECT_EQ(there, (c.align & TA_UPDATECP) != 0 && c.mode == MM_TEXT);
  }
}

TEST_F(Text, AlignmentsReachTheDriverWithoutStrayBits) {
  const std::pair<UINT, int> cases[] = {{TA_UPDATECP | TA_RIGHT, 2},
                                        {TA_CENTER | TA_BASELINE, 30},
                                        {4, 0},
                                        {16 | TA_RIGHT, 2},
                                        {0xFFFFFFFF, 30}};
  for (const auto& [set, seen] : cases) {
    SetTextAlign(hdc, set);
    EXPECT_EQ(GetTextAlign(hdc), set);
    TextOutA(hdc, 0, 0, "x", 1);
    EXPECT_NE(Take().find(" align=" + std::to_string(seen) + " "), std::string::npos) << set;
  }
}

}  // namespace
