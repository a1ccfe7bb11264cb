#include "tests/gfx/gdi_fixture.h"

namespace {

class Journal : public GdiTest {};

TEST_F(Journal, ShapesAtTheLimits) {
  MoveToEx(hdc, -1, 2, nullptr);
  LineTo(hdc, 3, 4);
  LineTo(hdc, 3, 4);
  EXPECT_EQ(Take(),
            "line -1,2 3,4 pen=0/0/#000000 clip=none\nline 3,4 3,4 pen=0/0/#000000 clip=none\n");
  SelectObject(hdc, GetStockObject(NULL_BRUSH));
  Use(hdc, CreatePen(PS_SOLID, -5, 0xFF000000));  // never below 0; 24 bits of colour
  const POINT points[] = {{0, 0}, {1, -2}, {kMax, kMin}};
  EXPECT_TRUE(Polygon(hdc, points, 3));
  EXPECT_EQ(Take(),
            "polygon 3 0,0 1,-2 2147483647,-2147483648 pen=0/0/#000000 brush=hollow "
            "clip=none\n");
  EXPECT_FALSE(Polygon(hdc, points, 1) || Polyline(hdc, nullptr, 2));
  IntersectClipRect(hdc, 1, 2, 30, 40);
  Rectangle(hdc, 9, 8, 1, 2);  // edges in any order
  EXPECT_EQ(Take(), "rectangle 1,2 9,8 pen=0/0/#000000 brush=hollow clip=1,2,30,40\n");
  const RECT box{1, 2, 3, 4};
  FillRect(hdc, &box, reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_WINDOW + 1}));
  EXPECT_EQ(Take(), "fill 1,2 3,4 brush=#FFFFFF clip=1,2,30,40\n");
}

TEST_F(Journal, Texts) {
  TextOutA(hdc, 0, 0, "a\"\\\n\r\t\x01\x7F\xC3\xA9", 10);
  EXPECT_EQ(Take(),
            "text 0,0 \"a\\\"\\\\\\n\\r\\t\\x01\\x7f\xC3\xA9\" font=16x0@0 color=#000000 align=0 "
            "bk=2 clip=none\n");
  Use(hdc, NewFont(-13, 4, 900));
  SetTextColor(hdc, RGB(255, 0, 16));
  SetTextAlign(hdc, TA_BASELINE | TA_CENTER);
  SetBkMode(hdc, TRANSPARENT);
  TextOutA(hdc, 10, 20, "mV", 2);
  TextOutA(hdc, 10, 20, "", 0);
  EXPECT_EQ(Take(), "text 10,20 \"mV\" font=-13x4@900 color=#FF0010 align=30 bk=1 clip=none\n");
}

TEST_F(Journal, Images) {
  const BYTE pixel[4] = {3, 2, 1, 0xEE};  // the hash is FNV-1a of the first three
  BITMAPINFO info = DibInfo(1, 1);
  SetDIBitsToDevice(hdc, 5, 6, 1, 1, 0, 0, 0, 1, pixel, &info, DIB_RGB_COLORS);
  EXPECT_EQ(Take(), "dib 5,6 1,1 hash=e1efc21870f169c3 clip=none\n");
  info = DibInfo(1, 1, 32);
  StretchDIBits(hdc, 5, 6, 40, 30, 0, 0, 1, 1, pixel, &info, DIB_RGB_COLORS, SRCCOPY);
  EXPECT_EQ(Take(), "stretch 5,6 40,30 from 0,0 1,1 hash=e1efc21870f169c3 clip=none\n");
  BitBlt(hdc, 1, 2, 3, 4, hdc, 5, 6, SRCCOPY);
  EXPECT_EQ(Take(), "blit 1,2 3,4 from 5,6 clip=none\n");
}

}  // namespace
