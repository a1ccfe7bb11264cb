#include "tests/gfx/gdi_fixture.h"

namespace {

HGDIOBJ AsHandle(std::uintptr_t value) { return reinterpret_cast<HGDIOBJ>(value); }
std::uintptr_t AsValue(const void* handle) { return reinterpret_cast<std::uintptr_t>(handle); }

class Handles : public GdiTest {};

TEST_F(Handles, TypesAndCounts) {
  const std::size_t before = gfx::LiveObjects();
  const std::pair<HGDIOBJ, UINT> objects[] = {{CreatePen(PS_SOLID, 1, 0), OBJ_PEN},
                                              {CreateSolidBrush(0), OBJ_BRUSH},
                                              {NewFont(9), OBJ_FONT},
                                              {CreateCompatibleBitmap(hdc, 2, 2), OBJ_BITMAP},
                                              {CreateRectRgn(0, 0, 1, 1), OBJ_REGION},
                                              {CreateCompatibleDC(hdc), OBJ_MEMDC},
                                              {gfx::CreateNullContext(), OBJ_DC}};
  EXPECT_EQ(gfx::LiveObjects(), before + std::size(objects));
  for (const auto& [object, type] : objects) {
    EXPECT_EQ(GetObjectType(object), type);
    EXPECT_LE(AsValue(object), 0xFFFFFFFFu);
    EXPECT_GE(AsValue(object), 0x10000u) << "would pass for a colour index";
    const bool context = type == OBJ_MEMDC || type == OBJ_DC;
    EXPECT_NE(DeleteObject(object) != FALSE, context);
    EXPECT_EQ(DeleteDC(static_cast<HDC>(object)) != FALSE, context);
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
  DeleteObject(pens.back());
  pens.back() = CreateSolidBrush(0);
  EXPECT_EQ(GetObjectType(pens.back()), OBJ_BRUSH);
  for (HGDIOBJ pen : pens) EXPECT_TRUE(DeleteObject(pen));
}

TEST_F(Handles, StockObjectsAreNotDeleted) {
  std::vector<HGDIOBJ> stock{GetSysColorBrush(COLOR_WINDOW)};
  for (int index = -1; index < 20; ++index) stock.push_back(GetStockObject(index));
  for (HGDIOBJ object : stock) {
    const UINT type = GetObjectType(object);
    EXPECT_EQ(DeleteObject(object) != FALSE, object != nullptr);
    EXPECT_EQ(GetObjectType(object), type);
  }
  EXPECT_EQ(GetSysColorBrush(2), nullptr);
  EXPECT_EQ(GetSysColorBrush(-1), nullptr);
}

// Every call, with a handle that is no context, or no object.
TEST_F(Handles, BadHandlesAreRefused) {
  HDC stale = gfx::CreateNullContext();
  DeleteDC(stale);
  for (HGDIOBJ handle : {HGDIOBJ{}, HGDIOBJ{stale}, AsHandle(3), AsHandle(~std::uintptr_t{0}),
                         AsHandle(AsValue(hdc) ^ 0x100000), AsHandle(1000)}) {
    HDC bad = static_cast<HDC>(handle);
    POINT points[2] = {{1, 2}, {3, 4}};
    RECT box{0, 0, 5, 5};
    SIZE size{7, 7};
    TEXTMETRICA metrics{};
    BITMAPINFO info = DibInfo(1, 1);
    BYTE bits[100] = {};
    HBRUSH white = GetSysColorBrush(COLOR_WINDOW);
    HBITMAP bitmap = static_cast<HBITMAP>(handle);
    EXPECT_EQ(SaveDC(bad) | RestoreDC(bad, -1) | DeleteDC(bad) | DeleteObject(bad), 0);
    EXPECT_EQ(SetMapMode(bad, MM_TEXT) | GetMapMode(bad) | SetBkMode(bad, OPAQUE), 0);
    EXPECT_EQ(SetViewportOrgEx(bad, 1, 1, points) | GetViewportOrgEx(bad, points), 0);
    EXPECT_EQ(LPtoDP(bad, points, 2) | DPtoLP(bad, points, 2) | GetDeviceCaps(bad, HORZRES), 0);
    EXPECT_EQ(GetTextExtentPoint32A(bad, "x", 1, &size) | GetTextMetricsA(bad, &metrics), 0);
    EXPECT_EQ(TextOutA(bad, 0, 0, "x", 1) | MoveToEx(bad, 0, 0, points) | LineTo(bad, 0, 0), 0);
    EXPECT_EQ(Polyline(bad, points, 2) | Polygon(bad, points, 2), 0);
    EXPECT_EQ(Rectangle(bad, 0, 0, 1, 1) | Ellipse(bad, 0, 0, 1, 1) | FillRect(bad, &box, white),
              0);
    EXPECT_EQ(IntersectClipRect(bad, 0, 0, 1, 1) | SelectClipRgn(bad, nullptr), ERROR);
    EXPECT_EQ(GetClipBox(bad, &box), ERROR);
    EXPECT_EQ(SetDIBitsToDevice(bad, 0, 0, 1, 1, 0, 0, 0, 1, bits, &info, DIB_RGB_COLORS), 0);
    EXPECT_EQ(StretchDIBits(bad, 0, 0, 1, 1, 0, 0, 1, 1, bits, &info, 0, SRCCOPY), 0);
    EXPECT_EQ(BitBlt(bad, 0, 0, 1, 1, hdc, 0, 0, SRCCOPY), 0);
    EXPECT_EQ(BitBlt(hdc, 0, 0, 1, 1, bad, 0, 0, SRCCOPY), 0);
    EXPECT_EQ(GetDIBits(hdc, bitmap, 0, 1, bits, &info, DIB_RGB_COLORS), 0);
    EXPECT_EQ(FillRect(hdc, &box, static_cast<HBRUSH>(handle)) | GetObjectA(handle, 100, bits), 0);
    EXPECT_EQ(SelectClipRgn(hdc, static_cast<HRGN>(handle)) == ERROR, handle != nullptr);
    EXPECT_EQ((std::vector<const void*>{CreateCompatibleBitmap(bad, 1, 1), SelectObject(hdc, bad),
                                        SelectObject(bad, GetStockObject(BLACK_PEN)),
                                        GetCurrentObject(bad, OBJ_PEN), gfx::DriverOf(bad),
                                        bad == nullptr ? nullptr : CreateCompatibleDC(bad)}),
              std::vector<const void*>(6));
    EXPECT_EQ((std::vector<DWORD>{SetBkColor(bad, 0), GetBkColor(bad), SetTextColor(bad, 0),
                                  GetTextColor(bad), SetTextAlign(bad, 0), GetTextAlign(bad)}),
              std::vector<DWORD>(6, CLR_INVALID));
    EXPECT_EQ(Of(points[0]), (Numbers{1, 2}));
    EXPECT_EQ(Of(box), (Numbers{0, 0, 5, 5}));
  }
  EXPECT_EQ(SelectObject(hdc, hdc), nullptr);
  EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), GetStockObject(BLACK_PEN));
  EXPECT_EQ(journal, "");
}

TEST_F(Handles, BadDescriptionsMakeNothing) {
  const LOGBRUSH hatched{2, 0, 0};
  EXPECT_EQ(CreateBrushIndirect(&hatched), nullptr);
  EXPECT_EQ(CreateCompatibleBitmap(hdc, 0, 5), nullptr);
  EXPECT_EQ(CreateCompatibleBitmap(hdc, 1 << 20, 1 << 20), nullptr);
  EXPECT_EQ(CreateDCA("PRINTER", nullptr, nullptr, nullptr), nullptr);
  EXPECT_EQ(gfx::CreateContext(nullptr), nullptr);
  const HGDIOBJ made[] = {CreatePenIndirect(nullptr), CreateBrushIndirect(nullptr),
                          CreateFontIndirectA(nullptr), CreateRectRgnIndirect(nullptr)};
  for (HGDIOBJ object : made) EXPECT_EQ(object, nullptr);
}

TEST_F(Handles, GetObjectCopiesWhatFits) {
  LOGFONTA font{};
  font.lfHeight = -11;
  for (char& character : font.lfFaceName) character = 'x';  // no terminator
  HFONT handle = CreateFontIndirectA(&font);
  LOGFONTA got{};
  EXPECT_EQ(GetObjectA(handle, 0, nullptr), 60);
  EXPECT_EQ(GetObjectA(handle, 2, &got), 2);
  EXPECT_EQ(got.lfHeight, 0xFFF5) << "two bytes of -11";
  EXPECT_EQ(GetObjectA(handle, -1, &got), 0);
  EXPECT_EQ(GetObjectA(handle, 1000, &got), 60);
  EXPECT_EQ(std::string(got.lfFaceName).size(), 31u);
  DeleteObject(handle);
  HPEN pen = CreatePen(99, -3, 0);  // unknown styles are solid
  LOGPEN described{};
  EXPECT_EQ(GetObjectA(pen, sizeof described - 1, &described), 0);
  EXPECT_EQ(GetObjectA(pen, sizeof described, &described), static_cast<int>(sizeof described));
  EXPECT_EQ(described.lopnStyle, static_cast<UINT>(PS_SOLID));
  DeleteObject(pen);
}

}  // namespace
