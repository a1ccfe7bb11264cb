#include "tests/gfx/gdi_fixture.h"

namespace {

class ContextState : public GdiTest {
 protected:
  // The pen the next line is drawn with, as the journal shows it.
  std::string PenInUse() {
    journal.clear();
    LineTo(hdc, 0, 0);
    const std::size_t start = journal.find("pen=") + 4;
    return journal.substr(start, journal.find(" clip") - start);
  }
};

TEST_F(ContextState, RestoreBringsBackEverything) {
  struct Snapshot {
    explicit Snapshot(HDC hdc)
        : values{GetCurrentObject(hdc, OBJ_PEN) == GetStockObject(BLACK_PEN),
                 GetCurrentObject(hdc, OBJ_BRUSH) == GetStockObject(WHITE_BRUSH),
                 GetCurrentObject(hdc, OBJ_FONT) == GetStockObject(SYSTEM_FONT),
                 GetTextColor(hdc),
                 GetBkColor(hdc),
                 GetTextAlign(hdc),
                 static_cast<UINT>(GetMapMode(hdc))} {
      GetViewportOrgEx(hdc, &origin);
      MoveToEx(hdc, 0, 0, &position);
      MoveToEx(hdc, position.x, position.y, nullptr);
      GetClipBox(hdc, &clip);
    }
    std::vector<UINT> values;
    POINT origin, position;
    RECT clip;
  };
  MoveToEx(hdc, 3, 4, nullptr);
  const Snapshot before(hdc);
  EXPECT_EQ(before.values, (std::vector<UINT>{1, 1, 1, 0, 0xFFFFFF, 0, MM_TEXT}));
  EXPECT_EQ(SaveDC(hdc), 1);
  Use(CreatePen(PS_DASH, 2, 1));
  Use(CreateSolidBrush(5));
  Use(Font(30));
  SetTextColor(hdc, 1);
  SetBkColor(hdc, 2);
  EXPECT_EQ(SetBkMode(hdc, TRANSPARENT), OPAQUE);
  SetTextAlign(hdc, TA_RIGHT);
  SetMapMode(hdc, MM_TWIPS);
  SetViewportOrgEx(hdc, 7, 8, nullptr);
  IntersectClipRect(hdc, 0, 0, 100, 100);
  MoveToEx(hdc, 9, 9, nullptr);
  EXPECT_TRUE(RestoreDC(hdc, -1));
  const Snapshot after(hdc);
  EXPECT_EQ(after.values, before.values);
  EXPECT_EQ(after.origin, before.origin);
  EXPECT_EQ(after.position, before.position);
  EXPECT_EQ(after.clip, before.clip);
  EXPECT_EQ(SetBkMode(hdc, OPAQUE), OPAQUE);
}

// Levels 1 to 4 are saved with text colours 1 to 4; the current colour is 5.
struct RestoreCase {
  const char* name;
  int level;
  bool restored;
  COLORREF color;
  int nextLevel;  // what the next SaveDC answers
};
class RestoreLevel : public testing::TestWithParam<RestoreCase> {};

TEST_P(RestoreLevel, DropsNewerLevels) {
  HDC hdc = gfx::CreateNullContext();
  for (COLORREF color = 1; color <= 4; ++color) {
    SetTextColor(hdc, color);
    EXPECT_EQ(SaveDC(hdc), static_cast<int>(color));
  }
  SetTextColor(hdc, 5);
  EXPECT_EQ(RestoreDC(hdc, GetParam().level) != FALSE, GetParam().restored);
  EXPECT_EQ(GetTextColor(hdc), GetParam().color);
  EXPECT_EQ(SaveDC(hdc), GetParam().nextLevel);
  DeleteDC(hdc);
}

constexpr int kLowest = -2147483647 - 1;
INSTANTIATE_TEST_SUITE_P(
    Levels, RestoreLevel,
    testing::Values(RestoreCase{"Newest", -1, true, 4, 4},
                    RestoreCase{"ThirdNewest", -3, true, 2, 2},
                    RestoreCase{"Oldest", -4, true, 1, 1}, RestoreCase{"TooOld", -5, false, 5, 5},
                    RestoreCase{"First", 1, true, 1, 1}, RestoreCase{"Fourth", 4, true, 4, 4},
                    RestoreCase{"NotYet", 5, false, 5, 5}, RestoreCase{"Zero", 0, false, 5, 5},
                    RestoreCase{"Lowest", kLowest, false, 5, 5},
                    RestoreCase{"Highest", 2147483647, false, 5, 5}),
    [](const auto& chosen) { return chosen.param.name; });

TEST_F(ContextState, SelectionReturnsThePreviousObject) {
  HPEN first = CreatePen(PS_SOLID, 3, RGB(1, 1, 1));
  HPEN second = CreatePen(PS_DOT, 0, RGB(2, 2, 2));
  EXPECT_EQ(SelectObject(hdc, first), GetStockObject(BLACK_PEN));
  EXPECT_EQ(SelectObject(hdc, second), first);
  EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), second);
  EXPECT_EQ(GetCurrentObject(hdc, OBJ_BRUSH), GetStockObject(WHITE_BRUSH)) << "another kind";
  EXPECT_EQ(PenInUse(), "2/0/#020202");
  EXPECT_EQ(SelectObject(hdc, first), second);
  EXPECT_EQ(PenInUse(), "0/3/#010101");
  DeleteObject(first);
  DeleteObject(second);
}

TEST_F(ContextState, ADeletedObjectLivesWhileAnyStateHasIt) {
  const std::size_t before = gfx::LiveObjects();
  HPEN pen = CreatePen(PS_SOLID, 3, RGB(1, 2, 3));
  HDC other = gfx::CreateNullContext();
  SelectObject(other, pen);
  SelectObject(hdc, pen);
  SaveDC(hdc);
  EXPECT_TRUE(DeleteObject(pen));
  EXPECT_EQ(GetObjectType(pen), 0u);
  EXPECT_EQ(PenInUse(), "0/3/#010203");
  EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), pen) << "still named, though dead";
  EXPECT_EQ(SelectObject(hdc, GetStockObject(WHITE_PEN)), pen);
  EXPECT_EQ(SelectObject(hdc, pen), nullptr) << "unreachable by new calls";
  EXPECT_EQ(PenInUse(), "0/0/#FFFFFF");
  RestoreDC(hdc, -1);
  EXPECT_EQ(PenInUse(), "0/3/#010203");
  SelectObject(hdc, GetStockObject(BLACK_PEN));
  EXPECT_EQ(gfx::LiveObjects(), before + 2) << "the other context and its pen";
  DeleteDC(other);
  EXPECT_EQ(gfx::LiveObjects(), before);
}

TEST_F(ContextState, BitmapsGoIntoOneMemoryContextAtATime) {
  HBITMAP bitmap = CreateCompatibleBitmap(hdc, 4, 4);
  EXPECT_EQ(SelectObject(hdc, bitmap), nullptr) << "not a memory context";
  HDC first = CreateCompatibleDC(hdc);
  HDC second = CreateCompatibleDC(first);
  HGDIOBJ own = SelectObject(first, bitmap);
  EXPECT_EQ(GetObjectType(own), OBJ_BITMAP);
  EXPECT_TRUE(DeleteObject(own));
  EXPECT_EQ(GetObjectType(own), OBJ_BITMAP) << "a context's own bitmap stays";
  EXPECT_EQ(GetDeviceCaps(first, HORZRES), 4);
  EXPECT_EQ(SelectObject(second, bitmap), nullptr);
  EXPECT_EQ(SelectObject(first, bitmap), bitmap) << "again where it is";
  SaveDC(first);
  EXPECT_EQ(SelectObject(first, own), bitmap);
  EXPECT_EQ(GetDeviceCaps(first, HORZRES), 1);
  EXPECT_EQ(SelectObject(second, bitmap), nullptr) << "held by a saved state";
  EXPECT_TRUE(RestoreDC(first, -1));
  EXPECT_EQ(GetDeviceCaps(first, HORZRES), 4);
  SelectObject(first, own);
  EXPECT_NE(SelectObject(second, bitmap), nullptr);
  EXPECT_TRUE(DeleteObject(bitmap));
  EXPECT_EQ(GetDeviceCaps(second, VERTRES), 4) << "deleted while selected";
  EXPECT_EQ(GetCurrentObject(second, OBJ_BITMAP), bitmap);
  DeleteDC(first);
  EXPECT_EQ(GetObjectType(own), 0u) << "ends with its context";
  DeleteDC(second);
}

TEST_F(ContextState, BadModesAreRefused) {
  EXPECT_EQ(SetBkMode(hdc, 3), 0);
  EXPECT_EQ(SetBkMode(hdc, 0), 0);
  EXPECT_EQ(SetMapMode(hdc, 8), 0);
  EXPECT_EQ(SetMapMode(hdc, MM_TWIPS), MM_TEXT);
  EXPECT_EQ(SetMapMode(hdc, MM_TEXT), MM_TWIPS);
  EXPECT_EQ(GetDeviceCaps(hdc, 12345), 0);
}

}  // namespace
