#include <functional>
#include <vector>

#include "tests/gfx/gdi_fixture.h"

namespace {

HGDIOBJ AsHandle(std::uintptr_t value) { return reinterpret_cast<HGDIOBJ>(value); }
std::uintptr_t AsValue(const void* handle) { return reinterpret_cast<std::uintptr_t>(handle); }

// One of each kind the program can make.
std::vector<HGDIOBJ> OneOfEach(HDC hdc) {
  const LOGFONTA font{};
  return {CreatePen(PS_SOLID, 1, 0), CreateSolidBrush(0), CreateFontIndirectA(&font),
          CreateCompatibleBitmap(hdc, 2, 2), CreateRectRgn(0, 0, 1, 1)};
}

class Handles : public GdiTest {};

TEST_F(Handles, TypesAndCounts) {
  const std::size_t before = gfx::LiveObjects();
  const std::vector<HGDIOBJ> objects = OneOfEach(hdc);
  EXPECT_EQ(gfx::LiveObjects(), before + objects.size());
  const UINT types[] = {OBJ_PEN, OBJ_BRUSH, OBJ_FONT, OBJ_BITMAP, OBJ_REGION};
  for (std::size_t i = 0; i < objects.size(); ++i) {
    EXPECT_EQ(GetObjectType(objects[i]), types[i]);
    EXPECT_LE(AsValue(objects[i]), 0xFFFFFFFFu);
    EXPECT_GE(AsValue(objects[i]), 0x10000u) << "would pass for a colour index";
  }
  EXPECT_EQ(GetObjectType(hdc), OBJ_DC);
  HDC memory = CreateCompatibleDC(hdc);
  EXPECT_EQ(GetObjectType(memory), OBJ_MEMDC);
  EXPECT_FALSE(DeleteObject(memory));
  EXPECT_TRUE(DeleteDC(memory));
  for (HGDIOBJ object : objects) {
    EXPECT_FALSE(DeleteDC(static_cast<HDC>(object)));
    EXPECT_TRUE(DeleteObject(object));
    EXPECT_FALSE(DeleteObject(object)) << "a second deletion";
    EXPECT_EQ(GetObjectType(object), 0u);
  }
  EXPECT_EQ(gfx::LiveObjects(), before);
}

TEST_F(Handles, AStaleHandleStaysRefusedWhileItsPlaceIsReused) {
  HPEN stale = CreatePen(PS_SOLID, 1, 0);
  DeleteObject(stale);
  bool placeReused = false;
  for (int i = 0; i < 20'000; ++i) {
    HPEN pen = CreatePen(PS_SOLID, 1, 0);
    placeReused |= (AsValue(pen) & 0xFFFF) == (AsValue(stale) & 0xFFFF);
    ASSERT_NE(pen, stale);
    ASSERT_EQ(GetObjectType(stale), 0u);
    DeleteObject(pen);
  }
  EXPECT_TRUE(placeReused);
}

TEST_F(Handles, AFullTableRefusesAndRecovers) {
  std::vector<HGDIOBJ> pens;
  while (HGDIOBJ pen = CreatePen(PS_SOLID, 1, 0)) {
    pens.push_back(pen);
    ASSERT_LE(pens.size(), 65536u);
  }
  EXPECT_GT(pens.size(), 60'000u);
  EXPECT_EQ(CreateCompatibleDC(hdc), nullptr);
  EXPECT_EQ(gfx::CreateNullContext(), nullptr);
  DeleteObject(pens.back());
  pens.back() = CreateSolidBrush(0);
  EXPECT_EQ(GetObjectType(pens.back()), OBJ_BRUSH);
  for (HGDIOBJ pen : pens) EXPECT_TRUE(DeleteObject(pen));
}

TEST_F(Handles, StockObjectsAreNeitherCountedNorDeleted) {
  const std::size_t before = gfx::LiveObjects();
  for (int index = -1; index < 20; ++index) {
    HGDIOBJ stock = GetStockObject(index);
    if (stock == nullptr) continue;
    EXPECT_TRUE(DeleteObject(stock));
    EXPECT_NE(GetObjectType(stock), 0u) << index;
    EXPECT_EQ(GetStockObject(index), stock);
  }
  HBRUSH face = GetSysColorBrush(COLOR_BTNFACE);
  EXPECT_TRUE(DeleteObject(face));
  LOGBRUSH brush{};
  EXPECT_EQ(GetObjectA(face, sizeof brush, &brush), static_cast<int>(sizeof brush));
  EXPECT_EQ(brush.lbColor, GetSysColor(COLOR_BTNFACE));
  EXPECT_EQ(GetSysColorBrush(2), nullptr);
  EXPECT_EQ(GetSysColorBrush(-1), nullptr);
  EXPECT_EQ(gfx::LiveObjects(), before);
}

struct BadHandle {
  const char* name;
  std::function<HGDIOBJ()> make;
};
class RefusedContext : public testing::TestWithParam<BadHandle> {};

// Every call that takes a context, with a handle that is none.
TEST_P(RefusedContext, ByEveryCall) {
  HDC bad = static_cast<HDC>(GetParam().make());
  POINT points[2] = {{1, 2}, {3, 4}};
  RECT box{0, 0, 5, 5};
  SIZE size{7, 7};
  TEXTMETRICA metrics{};
  BITMAPINFO info = DibInfo(1, 1);
  const BYTE pixel[4] = {};
  HBITMAP bitmap = nullptr;
  EXPECT_EQ(SaveDC(bad), 0);
  EXPECT_FALSE(RestoreDC(bad, -1));
  EXPECT_EQ(SetMapMode(bad, MM_TEXT), 0);
  EXPECT_EQ(GetMapMode(bad), 0);
  EXPECT_FALSE(SetViewportOrgEx(bad, 1, 1, points));
  EXPECT_FALSE(GetViewportOrgEx(bad, points));
  EXPECT_FALSE(LPtoDP(bad, points, 2));
  EXPECT_FALSE(DPtoLP(bad, points, 2));
  EXPECT_EQ(SetBkMode(bad, OPAQUE), 0);
  EXPECT_EQ(SetBkColor(bad, 0), CLR_INVALID);
  EXPECT_EQ(GetBkColor(bad), CLR_INVALID);
  EXPECT_EQ(SetTextColor(bad, 0), CLR_INVALID);
  EXPECT_EQ(GetTextColor(bad), CLR_INVALID);
  EXPECT_EQ(SetTextAlign(bad, 0), GDI_ERROR);
  EXPECT_EQ(GetTextAlign(bad), GDI_ERROR);
  EXPECT_EQ(GetDeviceCaps(bad, LOGPIXELSX), 0);
  EXPECT_FALSE(DeleteDC(bad));
  EXPECT_EQ(CreateCompatibleBitmap(bad, 1, 1), nullptr);
  EXPECT_EQ(SelectObject(bad, GetStockObject(BLACK_PEN)), nullptr);
  EXPECT_EQ(GetCurrentObject(bad, OBJ_PEN), nullptr);
  EXPECT_FALSE(TextOutA(bad, 0, 0, "x", 1));
  EXPECT_FALSE(GetTextExtentPoint32A(bad, "x", 1, &size));
  EXPECT_FALSE(GetTextMetricsA(bad, &metrics));
  EXPECT_FALSE(MoveToEx(bad, 0, 0, points));
  EXPECT_FALSE(LineTo(bad, 0, 0));
  EXPECT_FALSE(Polyline(bad, points, 2));
  EXPECT_FALSE(Polygon(bad, points, 2));
  EXPECT_FALSE(Rectangle(bad, 0, 0, 1, 1));
  EXPECT_FALSE(Ellipse(bad, 0, 0, 1, 1));
  EXPECT_EQ(FillRect(bad, &box, GetSysColorBrush(COLOR_WINDOW)), 0);
  EXPECT_EQ(IntersectClipRect(bad, 0, 0, 1, 1), ERROR);
  EXPECT_EQ(SelectClipRgn(bad, nullptr), ERROR);
  EXPECT_EQ(GetClipBox(bad, &box), ERROR);
  EXPECT_EQ(SetDIBitsToDevice(bad, 0, 0, 1, 1, 0, 0, 0, 1, pixel, &info, 0), 0);
  EXPECT_EQ(StretchDIBits(bad, 0, 0, 1, 1, 0, 0, 1, 1, pixel, &info, 0, SRCCOPY), 0);
  EXPECT_FALSE(BitBlt(bad, 0, 0, 1, 1, bad, 0, 0, SRCCOPY));
  EXPECT_EQ(GetDIBits(bad, bitmap, 0, 1, nullptr, &info, 0), 0);
  EXPECT_EQ(gfx::DriverOf(bad), nullptr);
  if (bad != nullptr) {
    EXPECT_EQ(CreateCompatibleDC(bad), nullptr);
  }
  EXPECT_EQ(points[0], (POINT{1, 2}));
  EXPECT_EQ(box, (RECT{0, 0, 5, 5}));
  EXPECT_EQ(size, (SIZE{7, 7}));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, RefusedContext,
    testing::Values(BadHandle{"Null", [] { return HGDIOBJ{}; }},
                    BadHandle{"Stale",
                              [] {
                                HDC context = gfx::CreateNullContext();
                                DeleteDC(context);
                                return static_cast<HGDIOBJ>(context);
                              }},
                    BadHandle{"Foreign", [] { return GetStockObject(WHITE_BRUSH); }},
                    BadHandle{"Small", [] { return AsHandle(3); }},
                    BadHandle{"Garbage", [] { return AsHandle(~std::uintptr_t{0}); }},
                    BadHandle{"WrongGeneration",
                              [] {
                                static HDC live = gfx::CreateNullContext();
                                return AsHandle(AsValue(live) ^ 0x00100000u);
                              }}),
    [](const auto& chosen) { return chosen.param.name; });

TEST_F(Handles, BadObjectsAreRefusedAndChangeNothing) {
  HPEN dead = CreatePen(PS_SOLID, 1, 0);
  DeleteObject(dead);
  const RECT box{0, 0, 5, 5};
  for (HGDIOBJ bad : {HGDIOBJ{}, static_cast<HGDIOBJ>(dead), static_cast<HGDIOBJ>(hdc), AsHandle(3),
                      AsHandle(1000)}) {
    EXPECT_EQ(SelectObject(hdc, bad), nullptr);
    EXPECT_EQ(GetObjectA(bad, 100, journal.data()), 0);
    EXPECT_EQ(FillRect(hdc, &box, static_cast<HBRUSH>(bad)), 0);
    EXPECT_EQ(SelectClipRgn(hdc, static_cast<HRGN>(bad)) == ERROR, bad != nullptr);
  }
  EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), GetStockObject(BLACK_PEN));
  EXPECT_EQ(GetCurrentObject(hdc, OBJ_BITMAP), nullptr);
  EXPECT_EQ(CreatePenIndirect(nullptr), nullptr);
  EXPECT_EQ(CreateBrushIndirect(nullptr), nullptr);
  const LOGBRUSH hatched{2, 0, 0};
  EXPECT_EQ(CreateBrushIndirect(&hatched), nullptr);
  EXPECT_EQ(CreateFontIndirectA(nullptr), nullptr);
  EXPECT_EQ(CreateRectRgnIndirect(nullptr), nullptr);
  EXPECT_EQ(CreateCompatibleBitmap(hdc, 0, 5), nullptr);
  EXPECT_EQ(CreateCompatibleBitmap(hdc, 1 << 20, 1 << 20), nullptr);
  EXPECT_EQ(CreateDCA("PRINTER", nullptr, nullptr, nullptr), nullptr);
  EXPECT_EQ(CreateDCA(nullptr, nullptr, nullptr, nullptr), nullptr);
  EXPECT_EQ(gfx::CreateContext(nullptr), nullptr);
  EXPECT_TRUE(journal.empty());
}

TEST_F(Handles, GetObjectCopiesWhatFits) {
  LOGFONTA font{};
  font.lfHeight = -11;
  for (char& character : font.lfFaceName) character = 'x';  // no terminator
  HFONT handle = CreateFontIndirectA(&font);
  LOGFONTA got{};
  EXPECT_EQ(GetObjectA(handle, 0, nullptr), 60);
  EXPECT_EQ(GetObjectA(handle, 1000, &got), 60);
  EXPECT_EQ(got.lfHeight, -11);
  EXPECT_EQ(std::string(got.lfFaceName).size(), 31u);
  got.lfWidth = 99;
  EXPECT_EQ(GetObjectA(handle, 4, &got), 4);
  EXPECT_EQ(got.lfWidth, 99);
  EXPECT_EQ(GetObjectA(handle, -1, &got), 0);
  DeleteObject(handle);

  HPEN pen = CreatePen(99, -3, RGB(1, 2, 3));  // unknown styles are solid
  LOGPEN described{};
  EXPECT_EQ(GetObjectA(pen, sizeof described - 1, &described), 0);
  EXPECT_EQ(GetObjectA(pen, sizeof described, &described), static_cast<int>(sizeof described));
  EXPECT_EQ(described.lopnStyle, static_cast<UINT>(PS_SOLID));
  EXPECT_EQ(described.lopnWidth.x, -3);
  DeleteObject(pen);

  HBITMAP bitmap = CreateCompatibleBitmap(hdc, 3, 4);
  BITMAP shape{};
  EXPECT_EQ(GetObjectA(bitmap, sizeof shape, &shape), static_cast<int>(sizeof shape));
  EXPECT_EQ(shape.bmWidth * 10 + shape.bmHeight, 34);
  DeleteObject(bitmap);
  EXPECT_EQ(GetObjectA(hdc, 100, &got), 0);
}

}  // namespace
