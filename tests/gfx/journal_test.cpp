#include <functional>
#include <string>

#include "tests/gfx/gdi_fixture.h"

namespace {

struct JournalCase {
  const char* name;
  std::function<void(HDC)> draw;
  const char* line;
};

void Select(HDC hdc, HGDIOBJ object) {
  SelectObject(hdc, object);
  DeleteObject(object);  // lives on while selected
}

// One pixel: blue 3, green 2, red 1; its hash is FNV-1a of 03 02 01.
constexpr BYTE kPixel[4] = {3, 2, 1, 0xEE};

class JournalLine : public testing::TestWithParam<JournalCase> {};

TEST_P(JournalLine, IsExact) {
  const std::size_t before = gfx::LiveObjects();
  std::string journal;
  HDC hdc = gfx::CreateJournalContext(journal);
  GetParam().draw(hdc);
  DeleteDC(hdc);
  EXPECT_EQ(journal, GetParam().line);
  EXPECT_EQ(gfx::LiveObjects(), before);
}

const JournalCase kCases[] = {
    {"Line",
     [](HDC hdc) {
       MoveToEx(hdc, -1, 2, nullptr);
       LineTo(hdc, 3, 4);
       LineTo(hdc, 3, 4);
     },
     "line -1,2 3,4 pen=0/0/#000000 clip=none\nline 3,4 3,4 pen=0/0/#000000 clip=none\n"},
    {"PolylineWithPen",
     [](HDC hdc) {
       Select(hdc, CreatePen(PS_DOT, 7, RGB(0xAB, 0x0C, 0xF1)));
       const POINT points[] = {{0, 0}, {1, -2}, {2147483647, -2147483647 - 1}};
       Polyline(hdc, points, 3);
     },
     "polyline 3 0,0 1,-2 2147483647,-2147483648 pen=2/7/#AB0CF1 clip=none\n"},
    {"PolygonHollow",
     [](HDC hdc) {
       SelectObject(hdc, GetStockObject(NULL_BRUSH));
       const POINT points[] = {{0, 0}, {5, 0}, {5, 5}};
       Polygon(hdc, points, 3);
     },
     "polygon 3 0,0 5,0 5,5 pen=0/0/#000000 brush=hollow clip=none\n"},
    {"RectangleEdgesAreOrdered", [](HDC hdc) { Rectangle(hdc, 9, 8, 1, 2); },
     "rectangle 1,2 9,8 pen=0/0/#000000 brush=#FFFFFF clip=none\n"},
    {"EllipseInClip",
     [](HDC hdc) {
       IntersectClipRect(hdc, 1, 2, 30, 40);
       Ellipse(hdc, 0, 0, 7, 9);
     },
     "ellipse 0,0 7,9 pen=0/0/#000000 brush=#FFFFFF clip=1,2,30,40\n"},
    {"FillByHandleAndByColour",
     [](HDC hdc) {
       const RECT box{1, 2, 3, 4};
       HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
       FillRect(hdc, &box, brush);
       DeleteObject(brush);
       FillRect(hdc, &box, reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_WINDOW + 1}));
     },
     "fill 1,2 3,4 brush=#010203 clip=none\nfill 1,2 3,4 brush=#FFFFFF clip=none\n"},
    {"TextAttributes",
     [](HDC hdc) {
       LOGFONTA font{};
       font.lfHeight = -13;
       font.lfWidth = 4;
       font.lfEscapement = 900;
       Select(hdc, CreateFontIndirectA(&font));
       SetTextColor(hdc, RGB(255, 0, 16));
       SetTextAlign(hdc, TA_BASELINE | TA_CENTER);
       SetBkMode(hdc, TRANSPARENT);
       TextOutA(hdc, 10, 20, "mV", 2);
     },
     "text 10,20 \"mV\" font=-13x4@900 color=#FF0010 align=30 bk=1 clip=none\n"},
    {"TextStaysOnALine", [](HDC hdc) { TextOutA(hdc, 0, 0, "a\"\\\n\r\t\x01\x7F\xC3\xA9", 10); },
     "text 0,0 \"a\\\"\\\\\\n\\r\\t\\x01\\x7f\xC3\xA9\" font=16x0@0 color=#000000 align=0 bk=2 "
     "clip=none\n"},
    {"Dib",
     [](HDC hdc) {
       const BITMAPINFO info = DibInfo(1, 1);
       SetDIBitsToDevice(hdc, 5, 6, 1, 1, 0, 0, 0, 1, kPixel, &info, DIB_RGB_COLORS);
     },
     "dib 5,6 1,1 hash=e1efc21870f169c3 clip=none\n"},
    {"Stretch",
     [](HDC hdc) {
       const BITMAPINFO info = DibInfo(1, 1, 32);
       StretchDIBits(hdc, 5, 6, 40, 30, 0, 0, 1, 1, kPixel, &info, DIB_RGB_COLORS, SRCCOPY);
     },
     "stretch 5,6 40,30 from 0,0 1,1 hash=e1efc21870f169c3 clip=none\n"},
    {"Blit", [](HDC hdc) { BitBlt(hdc, 1, 2, 3, 4, hdc, 5, 6, SRCCOPY); },
     "blit 1,2 3,4 from 5,6 clip=none\n"},
    {"StatePrintsNothing",
     [](HDC hdc) {
       SaveDC(hdc);
       SetMapMode(hdc, MM_TWIPS);
       MoveToEx(hdc, 3, 3, nullptr);
       SetBkColor(hdc, 5);
       TextOutA(hdc, 0, 0, "", 0);
       SelectClipRgn(hdc, nullptr);
       RestoreDC(hdc, -1);
     },
     ""},
};
INSTANTIATE_TEST_SUITE_P(Effects, JournalLine, testing::ValuesIn(kCases),
                         [](const auto& chosen) { return chosen.param.name; });

}  // namespace
