#include "platform/gfx/driver/null.h"
#include "tests/gfx/gdi_fixture.h"

namespace {

constexpr LONG kMin = -2147483647 - 1;
constexpr LONG kMax = 2147483647;

class DotsDriver final : public gfx::NullDriver {
 public:
  explicit DotsDriver(int dpi) : dpi_(dpi) {}
  int DotsPerInch() const override { return dpi_; }

 private:
  const int dpi_;
};

struct MappingCase {
  const char* name;
  int mode;
  int dpi;
  POINT origin;
  POINT logical;
  POINT device;
  POINT back;  // of the device point
};
class MappedPoint : public testing::TestWithParam<MappingCase> {};

TEST_P(MappedPoint, ThereAndBack) {
  const MappingCase& c = GetParam();
  HDC hdc = gfx::CreateContext(std::make_unique<DotsDriver>(c.dpi));
  SetMapMode(hdc, c.mode);
  POINT previous{5, 5};
  EXPECT_TRUE(SetViewportOrgEx(hdc, c.origin.x, c.origin.y, &previous));
  EXPECT_EQ(previous, (POINT{0, 0}));
  POINT point = c.logical;
  EXPECT_TRUE(LPtoDP(hdc, &point, 1));
  EXPECT_EQ(point, c.device);
  EXPECT_TRUE(DPtoLP(hdc, &point, 1));
  EXPECT_EQ(point, c.back);
  EXPECT_FALSE(LPtoDP(hdc, nullptr, 1));
  EXPECT_FALSE(LPtoDP(hdc, &point, -1));
  DeleteDC(hdc);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, MappedPoint,
    testing::Values(
        MappingCase{"Plain", MM_TEXT, 96, {0, 0}, {kMin, kMax}, {kMin, kMax}, {kMin, kMax}},
        MappingCase{"Shifted", MM_TEXT, 96, {10, -20}, {1, 2}, {11, -18}, {1, 2}},
        // 2^31 − 1 less 10 is all that comes back after the limit.
        MappingCase{
            "Limited", MM_TEXT, 96, {10, -10}, {kMax, kMin}, {kMax, kMin}, {kMax - 10, kMin + 10}},
        MappingCase{"TwipsUp", MM_TWIPS, 96, {100, 200}, {1440, 1440}, {196, 104}, {1440, 1440}},
        // 7 twips are 0.47 pixels, 8 are 0.53.
        MappingCase{"TwipsNearest", MM_TWIPS, 96, {0, 0}, {7, 8}, {0, -1}, {0, 15}},
        // 15 twips at 48 dpi are exactly half a pixel.
        MappingCase{"TwipsHalves", MM_TWIPS, 48, {0, 0}, {15, -15}, {1, 1}, {30, -30}},
        MappingCase{"TwipsNegativeHalf", MM_TWIPS, 48, {0, 0}, {-15, 15}, {-1, -1}, {-30, 30}},
        MappingCase{"TwipsEnds", MM_TWIPS, 1440, {0, 0}, {kMin, kMin}, {kMin, kMax}, {kMin, -kMax}},
        MappingCase{"TwipsBackBeyond",
                    MM_TWIPS,
                    96,
                    {-5, 0},
                    {kMax, kMin},
                    {143165571, 143165577},
                    {2147483640, kMin}}),
    [](const auto& chosen) { return chosen.param.name; });

class TwipsDrawing : public GdiTest {};

TEST_F(TwipsDrawing, ResolvesPensFontsAndBoxes) {
  SetMapMode(hdc, MM_TWIPS);
  SetViewportOrgEx(hdc, 0, 100, nullptr);
  Use(CreatePen(PS_SOLID, 30, 0));
  Rectangle(hdc, 0, 150, 300, 0);  // up is positive
  Use(CreatePen(PS_SOLID, 1, 0));
  MoveToEx(hdc, 15, 15, nullptr);
  LineTo(hdc, 30, -15);
  const POINT points[] = {{0, 0}, {150, 1500}};
  Polyline(hdc, points, 2);
  EXPECT_EQ(journal,
            "rectangle 0,90 20,100 pen=0/2/#000000 brush=#FFFFFF clip=none\n"
            "line 1,99 2,101 pen=0/0/#000000 clip=none\n"
            "polyline 2 0,100 10,0 pen=0/0/#000000 clip=none\n");
}

// Records the font it is asked about and answers ten pixels a byte.
class AskedText final : public gfx::TextEngine {
 public:
  SIZE Extent(const gfx::Font& font, std::string_view text) override {
    asked = {font.width, font.height};
    return {static_cast<LONG>(10 * text.size()), 20};
  }
  TEXTMETRICA Metrics(const gfx::Font& font) override {
    asked = {font.width, font.height};
    TEXTMETRICA metrics{};
    metrics.tmHeight = 20;
    metrics.tmAscent = 15;
    metrics.tmDescent = 5;
    metrics.tmAveCharWidth = 10;
    return metrics;
  }
  void Render(const gfx::Font&, std::string_view, POINT, const gfx::GlyphSink&) override {}
  SIZE asked{};
};

TEST_F(TwipsDrawing, MeasuresInPixelsAndScalesBack) {
  AskedText text;
  gfx::TextEngine* previous = gfx::SetDisplayText(&text);
  HDC display = CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  SetMapMode(display, MM_TWIPS);
  struct {
    LONG height, width;
    SIZE device;
  } const fonts[] = {{-300, 150, {10, -20}}, {-13, 3, {1, -1}}, {0, 0, {0, 12}}, {8, 0, {0, 1}}};
  for (const auto& font : fonts) {
    HFONT handle = Font(font.height, font.width);
    SelectObject(display, handle);
    SIZE size{};
    EXPECT_TRUE(GetTextExtentPoint32A(display, "abc", 3, &size));
    EXPECT_EQ(size, (SIZE{450, 300}));
    EXPECT_EQ(text.asked, font.device);
    DeleteObject(handle);
  }
  TEXTMETRICA metrics{};
  EXPECT_TRUE(GetTextMetricsA(display, &metrics));
  EXPECT_EQ(metrics.tmHeight, 300);
  EXPECT_EQ(metrics.tmAscent + metrics.tmDescent, 300);
  EXPECT_EQ(metrics.tmAveCharWidth, 150);
  DeleteDC(display);
  EXPECT_EQ(gfx::SetDisplayText(previous), &text);
}

}  // namespace
