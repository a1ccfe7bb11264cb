#include <algorithm>
#include <vector>

#include "tests/gfx/raster_fixture.h"
#include "tests/support/case_name.h"

namespace {

// Crossings left of or at the pixel's centre of edges that pass its row, lower ends excluded.
bool EvenOdd(const std::vector<POINT>& corners, std::int64_t x, std::int64_t y) {
  bool inside = false;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    POINT a = corners[i], b = corners[(i + 1) % corners.size()];
    if (a.y > b.y) std::swap(a, b);
    if (y < a.y || y >= b.y) continue;
    inside ^= (x - a.x) * (b.y - a.y) >= std::int64_t{b.x - a.x} * (y - a.y);
  }
  return inside;
}

std::vector<POINT> Corners(Seeded& random, int count) {
  std::vector<POINT> corners;
  for (int i = 0; i < count; ++i) corners.push_back(random.Point(-30, 90));
  return corners;
}

TEST(PolygonFill, IsEvenOddAtPixelCentres) {
  Seeded random(21);
  for (int i = 0; i < 1500; ++i) {
    const auto corners = Corners(random, random(3, 40));
    Picture got;
    got.driver->Polygon(corners.data(), static_cast<int>(corners.size()), kNoPen, kSolid, nullptr);
    const auto wanted = Expected(
        got, [&](int x, int y) { return EvenOdd(corners, x, y); }, kPaint);
    ASSERT_TRUE(SamePixels(got.surface, wanted)) << "polygon " << i;
  }
}

TEST(PolygonFill, WithFarCornersEqualsNearerOnes) {
  Seeded random(22);
  for (int i = 0; i < 500; ++i) {
    // A fan from a point in the picture, whose far edge is outside either way.
    const POINT tip = random.Point(0, 47), a = random.Point(3, 9), b = random.Point(-9, -3);
    const auto fan = [&](LONG times) {
      return std::vector<POINT>{tip,
                                {tip.x + a.x * times, tip.y + a.y * times},
                                {tip.x + a.x * times, tip.y + b.y * times}};
    };
    Picture got;
    got.driver->Polygon(fan(238609200).data(), 3, kNoPen, kSolid, nullptr);
    const auto wanted = Expected(
        got, [&](int x, int y) { return EvenOdd(fan(100), x, y); }, kPaint);
    ASSERT_TRUE(SamePixels(got.surface, wanted));
  }
}

TEST(Polygons, AreOutlinedAllAround) {
  const POINT corners[] = {{10, 10}, {50, 14}, {30, 40}};
  Picture got, edges;
  got.driver->Polygon(corners, 3, InkPen(4), kHollow, nullptr);
  for (int i = 0; i < 3; ++i) {
    edges.driver->Line(corners[i], corners[(i + 1) % 3], InkPen(4), nullptr);
  }
  EXPECT_TRUE(SamePixels(got.surface, edges.surface));
}

bool InEllipse(const RECT& box, std::int64_t x, std::int64_t y) {
  if (x < box.left || x >= box.right || y < box.top || y >= box.bottom) return false;
  const std::int64_t w = box.right - box.left, h = box.bottom - box.top;
  const std::int64_t dx = 2 * x + 1 - (box.left + box.right);
  const std::int64_t dy = 2 * y + 1 - (box.top + box.bottom);
  return dx * dx * h * h + dy * dy * w * w <= w * w * h * h || (dx >= -1 && dx <= 1) ||
         (dy >= -1 && dy <= 1);
}

TEST(Ellipses, FillAndOutlineByTheRule) {
  for (int w = 1; w < 40; ++w) {
    for (int h = 1; h < 30; ++h) {
      const RECT box{7, 5, 7 + w, 5 + h};
      Picture filled, outlined;
      filled.driver->Ellipse(box, kNoPen, kSolid, nullptr);
      outlined.driver->Ellipse(box, InkPen(), kHollow, nullptr);
      const auto inside = [&](int x, int y) { return InEllipse(box, x, y); };
      ASSERT_TRUE(SamePixels(filled.surface, Expected(filled, inside, kPaint))) << w << 'x' << h;
      ASSERT_TRUE(
          SamePixels(outlined.surface, Expected(outlined,
                                                [&](int x, int y) {
                                                  return inside(x, y) &&
                                                         !(inside(x - 1, y) && inside(x + 1, y) &&
                                                           inside(x, y - 1) && inside(x, y + 1));
                                                })))
          << w << 'x' << h;
      ASSERT_EQ(BoxOf(outlined.surface, kInk), box);
    }
  }
}

struct OutlineCase {
  const char* name;
  int style, width;
  RECT ink;  // of the box 20,10 50,40
};
class BoxOutline : public testing::TestWithParam<OutlineCase> {};
TEST_P(BoxOutline, KeepsItsBounds) {
  const OutlineCase& c = GetParam();
  const RECT box{20, 10, 50, 40};
  Picture rectangle, ellipse;
  rectangle.driver->Rectangle(box, InkPen(c.width, c.style), kHollow, nullptr);
  ellipse.driver->Ellipse(box, InkPen(c.width, c.style), kHollow, nullptr);
  EXPECT_EQ(BoxOf(rectangle.surface, kInk), c.ink);
  EXPECT_EQ(BoxOf(ellipse.surface, kInk), c.ink);
  for (const LONG y : {c.ink.top, c.ink.bottom - 1}) {
    EXPECT_EQ(rectangle.surface.Pixel(35, y), kInk);
    EXPECT_EQ(ellipse.surface.Pixel(35, y), kInk);
  }
  for (const LONG x : {c.ink.left + c.width - 1, c.ink.right - c.width}) {
    EXPECT_EQ(ellipse.surface.Pixel(x, 25), kInk);
  }
  for (const LONG x : {c.ink.left + c.width, c.ink.right - c.width - 1}) {
    EXPECT_EQ(ellipse.surface.Pixel(x, 25), kWhite);
  }
}
const OutlineCase kPensBoxOutline[] = {{"Hair", PS_SOLID, 1, {20, 10, 50, 40}},
                                       {"Even", PS_SOLID, 4, {18, 8, 51, 41}},
                                       {"Odd", PS_SOLID, 5, {18, 8, 52, 42}},
                                       {"InsideOdd", PS_INSIDEFRAME, 5, {20, 10, 50, 40}}};
INSTANTIATE_TEST_SUITE_P(Pens, BoxOutline, testing::ValuesIn(kPensBoxOutline), CaseName());

TEST(Rectangles, OfEverySmallSize) {
  for (LONG w = 0; w < 4; ++w) {
    for (LONG h = 0; h < 4; ++h) {
      Picture got;
      got.driver->Rectangle({5, 5, 5 + w, 5 + h}, InkPen(), kSolid, nullptr);
      const RECT nothing{64, 48, 0, 0}, box{5, 5, 5 + w, 5 + h};
      EXPECT_EQ(BoxOf(got.surface, kInk), w * h == 0 ? nothing : box);
      EXPECT_EQ(got.surface.Pixel(6, 6), w == 3 && h == 3 ? kPaint
                                         : w > 1 && h > 1 ? kInk
                                                          : kWhite);
    }
  }
}

TEST(Clips, ShowJustTheirPartOfThePicture) {
  for (unsigned i = 0; i < 3000; ++i) {
    RandomShapes one(i), same(i);
    const RECT clip = one.Box();
    same.Box();
    Picture whole(200, 150), part(200, 150);
    one.Draw(*whole.driver, nullptr, nullptr);
    same.Draw(*part.driver, nullptr, &clip);
    for (LONG y = 0; y < 150; ++y) {
      for (LONG x = 0; x < 200; ++x) {
        const bool in = x >= clip.left && x < clip.right && y >= clip.top && y < clip.bottom;
        if (!in) whole.surface.Row(y)[x] = gfx::PixelOf(kWhite);
      }
    }
    ASSERT_TRUE(SamePixels(part.surface, whole.surface)) << "drawing " << i;
  }
}

}  // namespace
