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
  // What a line, a text and a box show of the state.
  const auto draw = [this] {
    journal.clear();
    LineTo(hdc, 70, 80);
    Rectangle(hdc, 0, 0, 30, 30);
    TextOutA(hdc, 1, 2, "x", 1);
    MoveToEx(hdc, 3, 4, nullptr);
    return journal + std::to_string(GetBkColor(hdc));
  };
  const std::string before = (draw(), draw());  // both from position 3, 4
  EXPECT_EQ(SaveDC(hdc), 1);
  Use(hdc, CreatePen(PS_DASH, 2, 1));
  Use(hdc, CreateSolidBrush(5));
  Use(hdc, NewFont(30));
  SetTextColor(hdc, 1);
  SetBkColor(hdc, 2);
  EXPECT_EQ(SetBkMode(hdc, TRANSPARENT), OPAQUE);
  EXPECT_EQ(SetBkMode(hdc, 3) | SetMapMode(hdc, 8), 0) << "no such mode";
  SetTextAlign(hdc, TA_RIGHT);
  EXPECT_EQ(SetMapMode(hdc, MM_TWIPS), MM_TEXT);
  SetViewportOrgEx(hdc, 7, 8, nullptr);
  IntersectClipRect(hdc, 0, 0, 100, 100);
  MoveToEx(hdc, 9, 9, nullptr);
  EXPECT_TRUE(RestoreDC(hdc, -1));
  EXPECT_EQ(draw(), before);
}

// Levels 1 to 4 are saved with text colours 1 to 4; the current colour is 5.
TEST_F(ContextState, RestoreDropsNewerLevels) {
  struct {
    int level;
    bool restored;
    COLORREF color;  // also what the next SaveDC answers
  } const cases[] = {{-1, true, 4},    {-3, true, 2},   {-4, true, 1}, {-5, false, 5},
                     {1, true, 1},     {4, true, 4},    {5, false, 5}, {0, false, 5},
                     {kMin, false, 5}, {kMax, false, 5}};
  for (const auto& c : cases) {
    HDC context = gfx::CreateNullContext();
    for (COLORREF color = 1; color <= 4; ++color) {
      SetTextColor(context, color);
      EXPECT_EQ(SaveDC(context), static_cast<int>(color));
    }
    SetTextColor(context, 5);
    EXPECT_EQ(RestoreDC(context, c.level) != FALSE, c.restored) << c.level;
    EXPECT_EQ(GetTextColor(context), c.color) << c.level;
    EXPECT_EQ(SaveDC(context), static_cast<int>(c.color)) << c.level;
    DeleteDC(context);
  }
}

TEST_F(ContextState, ADeletedObjectLivesWhileAnyStateHasIt) {
  const std::size_t before = gfx::LiveObjects();
  HPEN pen = CreatePen(PS_SOLID, 3, RGB(1, 2, 3));
  HDC other = gfx::CreateNullContext();
  SelectObject(other, pen);
  SelectObject(hdc, pen);
  SaveDC(hdc);
  EXPECT_TRUE(DeleteObject(pen));
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
  HDC first = CreateCompatibleDC(hdc);
  HDC second = CreateCompatibleDC(first);
  HGDIOBJ own = SelectObject(first, bitmap);
  EXPECT_EQ(GetDeviceCaps(first, HORZRES), 4);
  EXPECT_EQ(SelectObject(second, bitmap), nullptr);
  SaveDC(first);
  EXPECT_EQ(SelectObject(first, own), bitmap);
  EXPECT_EQ(GetDeviceCaps(first, HORZRES), 1);
  EXPECT_EQ(SelectObject(second, bitmap), nullptr) << "held by a saved state";
  EXPECT_TRUE(RestoreDC(first, -1));
  SelectObject(first, own);
  EXPECT_NE(SelectObject(second, bitmap), nullptr);
  EXPECT_TRUE(DeleteObject(bitmap));
  EXPECT_EQ(GetDeviceCaps(second, VERTRES), 4) << "deleted while selected";
  DeleteDC(first);
  DeleteDC(second);
}

}  // namespace
