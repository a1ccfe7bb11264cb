#include "platform/gfx/driver/null.h"
#include "tests/gfx/gdi_fixture.h"

namespace {

struct DotsDriver final : gfx::NullDriver {
  explicit DotsDriver(int value) : dpi(value) {}
  int DotsPerInch() const override { return dpi; }
  const int dpi;
};

class Mapping : public GdiTest {};

TEST_F(Mapping, ThereAndBack) {
  struct {
    int mode, dpi;
    POINT origin, logical, device, back;
  } const cases[] = {
      {MM_TEXT, 96, {0, 0}, {kMin, kMax}, {kMin, kMax}, {kMin, kMax}},
      {MM_TEXT, 96, {10, -20}, {1, 2}, {11, -18}, {1, 2}},
      {MM_TWIPS, 96, {100, 200}, {1440, 1440}, {196, 104}, {1440, 1440}},
      // 15 twips are exactly half a pixel.
      {MM_TWIPS, 48, {0, 0}, {15, -15}, {1, 1}, {30, -30}},
      {MM_TWIPS, 1440, {0, 0}, {kMin, kMin}, {kMin, kMax}, {kMin, -kMax}},
      {MM_TWIPS, 96, {-5, 0}, {kMax, kMin}, {143165571, 143165577}, {2147483640, kMin}},
  };
  for (const auto& c : cases) {
    HDC context = gfx::CreateContext(std::make_unique<DotsDriver>(c.dpi));
    SetMapMode(context, c.mode);
    SetViewportOrgEx(context, c.origin.x, c.origin.y, nullptr);
    POINT point = c.logical;
    EXPECT_TRUE(LPtoDP(context, &point, 1));
    EXPECT_EQ(Of(point), Of(c.device));
    EXPECT_TRUE(DPtoLP(context, &point, 1));
    EXPECT_EQ(Of(point), Of(c.back));
    EXPECT_TRUE(SetViewportOrgEx(context, 0, 0, &point));
    EXPECT_EQ(Of(point), Of(c.origin));
    DeleteDC(context);
  }
  EXPECT_FALSE(LPtoDP(hdc, nullptr, 1));
}

TEST_F(Mapping, TwipsResolvePensAndBoxes) {
  SetMapMode(hdc, MM_TWIPS);
  SetViewportOrgEx(hdc, 0, 100, nullptr);
  Use(hdc, CreatePen(PS_SOLID, 30, 0));
  Rectangle(hdc, 0, 150, 300, 0);  // up is positive
  Use(hdc, CreatePen(PS_SOLID, 1, 0));
  MoveToEx(hdc, 15, 15, nullptr);
  LineTo(hdc, 30, -15);
  const POINT points[] = {{0, 0}, {150, 1500}};
  Polyline(hdc, points, 2);
  EXPECT_EQ(journal,
            "rectangle 0,90 20,100 pen=0/2/#000000 brush=#FFFFFF clip=none\n"
            "line 1,99 2,101 pen=0/0/#000000 clip=none\n"
            "polyline 2 0,100 10,0 pen=0/0/#000000 clip=none\n");
}

}  // namespace
