#include <algorithm>
#include <string>
#include <vector>

#include "platform/gfx/context.h"
#include "tests/gfx/raster_fixture.h"

namespace {

struct Dash {
  int style;
  const char* pattern;
};
constexpr Dash kDashes[] = {{PS_SOLID, "#"},
                            {PS_DASH, "############....."},
                            {PS_DOT, "#.."},
                            {PS_DASHDOT, "##########....##...."},
                            {PS_DASHDOTDOT, "##########....##....##...."}};

// The rule of cosmetic lines, pixel by pixel. Lengths below 2^32: products fit 64 bits.
void PlainLine(gfx::Surface& surface, POINT from, POINT to, const std::string& pattern,
               std::uint64_t phase) {
  const std::int64_t dx = std::int64_t{to.x} - from.x, dy = std::int64_t{to.y} - from.y;
  const auto size = [](std::int64_t d) { return static_cast<std::uint64_t>(d < 0 ? -d : d); };
  const bool steep = size(dy) > size(dx);
  const std::uint64_t length = steep ? size(dy) : size(dx), rise = steep ? size(dx) : size(dy);
  const int extent = steep ? surface.Height() : surface.Width();
  for (std::int64_t at = 0; at < extent; ++at) {
    const std::int64_t steps = (at - (steep ? from.y : from.x)) * ((steep ? dy : dx) < 0 ? -1 : 1);
    if (steps < 0 || static_cast<std::uint64_t>(steps) >= length) continue;
    const std::uint64_t product = static_cast<std::uint64_t>(steps) * rise;
    const bool down = (steep ? dx : dy) > 0;  // halves go to the smaller coordinate
    const std::uint64_t twice = 2 * (product % length);
    const std::uint64_t moved = product / length + (down ? twice > length : twice >= length);
    const std::int64_t other =
        (steep ? from.x : from.y) + static_cast<std::int64_t>(moved) * (down ? 1 : -1);
    const std::int64_t x = steep ? other : at, y = steep ? at : other;
    if (x < 0 || y < 0 || x >= surface.Width() || y >= surface.Height()) continue;
    if (pattern[(phase + static_cast<std::uint64_t>(steps)) % pattern.size()] == '#') {
      surface.Row(static_cast<int>(y))[x] = gfx::PixelOf(kInk);
    }
  }
}

class CosmeticLines : public testing::TestWithParam<LONG> {};  // the reach of coordinates

TEST_P(CosmeticLines, FollowTheRuleInEveryPixelAndKeepTheDashesGoing) {
  Seeded random(11);
  const std::int64_t reach = GetParam();
  int visible = 0;
  for (int i = 0; i < 1000; ++i) {
    const auto& [style, pattern] = kDashes[i % 5];
    std::vector<POINT> points{{random(-reach, reach - 64), random(-reach, reach - 64)}};
    while (points.size() < 10) {
      // Anywhere, or mirrored about a point of the picture so that the line passes it, or just at
      // the limits. What is invisible is part of the dash pattern too.
      const POINT last = points.back(), limit{random(0, 1) ? INT32_MIN : INT32_MAX, INT32_MIN};
      const bool canMirror =
          std::max(last.x, last.y) < INT32_MAX - 64 && std::min(last.x, last.y) > INT32_MIN + 64;
      const LONG kind = random(0, 9);
      if (kind == 0)
        points.push_back(limit);
      else if (kind < 5 && canMirror)
        points.push_back({random(0, 63) - last.x, random(0, 47) - last.y});
      else
        points.push_back({random(-reach, reach), random(-reach, reach)});
    }
    Picture got, wanted;
    got.driver->Polyline(points.data(), 10, InkPen(i % 3 / 2, style), nullptr);
    std::uint64_t phase = 0;
    for (int k = 1; k < 10; ++k) {
      PlainLine(wanted.surface, points[k - 1], points[k], pattern, phase);
      const std::int64_t dx = std::int64_t{points[k].x} - points[k - 1].x;
      const std::int64_t dy = std::int64_t{points[k].y} - points[k - 1].y;
      phase += static_cast<std::uint64_t>(std::max(std::max(dx, -dx), std::max(dy, -dy)));
    }
    ASSERT_TRUE(SamePixels(got.surface, wanted.surface)) << "polyline " << i;
    visible += BoxOf(got.surface, kInk).right > 0;
  }
  EXPECT_GT(visible, 500);
}
INSTANTIATE_TEST_SUITE_P(Reaches, CosmeticLines, testing::Values(80, 5000, 1 << 20, 2147483647));

TEST(DashGaps, ShowTheBackgroundColourInOpaqueMode) {
  for (const int mode : {OPAQUE, TRANSPARENT}) {
    const COLORREF gap = mode == OPAQUE ? kPaint : kWhite;
    Picture got;
    HDC hdc = gfx::CreateRasterContext(got.surface, gfx::BuiltinText());
    HPEN pen = CreatePen(PS_DASH, 0, kInk);
    SelectObject(hdc, pen);
    SetBkColor(hdc, kPaint);
    SetBkMode(hdc, mode);
    MoveToEx(hdc, 0, 1, nullptr);
    LineTo(hdc, 20, 1);
    DeleteDC(hdc);
    DeleteObject(pen);
    for (int x = 0; x < 21; ++x) {
      EXPECT_EQ(got.surface.Pixel(x, 1), x == 20 ? kWhite : x / 12 == 1 && x < 17 ? gap : kInk);
    }
  }
}

// The rule of wide lines: doubled coordinates, the disc's centre half a pixel up and left for even
// widths.
bool InCapsule(std::int64_t x, std::int64_t y, POINT from, POINT to, int width) {
  const std::int64_t shift = width % 2 == 0 ? 1 : 0;
  const std::int64_t px = 2 * (x - from.x) + shift, py = 2 * (y - from.y) + shift;
  const std::int64_t dx = 2 * (to.x - from.x), dy = 2 * (to.y - from.y);
  const std::int64_t square = dx * dx + dy * dy, along = px * dx + py * dy;
  const std::int64_t reach = std::int64_t{width} * width;
  if (along <= 0) return px * px + py * py <= reach;
  if (along >= square) return (px - dx) * (px - dx) + (py - dy) * (py - dy) <= reach;
  const std::int64_t across = px * dy - py * dx;
  return across * across <= reach * square;
}

TEST(WideLines, AreADiscSweptAlong) {
  Seeded random(3);
  for (int i = 0; i < 3000; ++i) {
    const int width = i % 7 == 0 ? random(60, 90) : random(2, 12);
    const POINT from = random.Point(-60, 110);
    POINT to = random.Point(-60, 110);
    if (i % 5 == 0) to.x = from.x;
    if (i % 6 == 0) to.y = from.y;
    Picture got;
    got.driver->Line(from, to, InkPen(width, i % 3), nullptr);  // dashes do not apply
    const auto wanted =
        Expected(got, [&](int x, int y) { return InCapsule(x, y, from, to, width); });
    ASSERT_TRUE(SamePixels(got.surface, wanted))
        << from.x << ',' << from.y << " to " << to.x << ',' << to.y << " width " << width;
  }
}

// Stretched along its own direction, a line that passes the picture stays the same there.
TEST(WideLines, WithFarEndsEqualNearerOnes) {
  Seeded random(9);
  for (int i = 0; i < 600; ++i) {
    const POINT middle = random.Point(0, 47);
    POINT d = random.Point(-9, 9);
    if (d.x == 0 && d.y == 0) d.x = 1;
    const int width = random(2, 40);
    const LONG most = INT32_MAX / 9 - 50;
    const auto end = [&](LONG times) {
      return POINT{middle.x + d.x * times, middle.y + d.y * times};
    };
    Picture far;
    far.driver->Line(end(-most), end(most), InkPen(width), nullptr);
    const auto wanted =
        Expected(far, [&](int x, int y) { return InCapsule(x, y, end(-400), end(400), width); });
    ASSERT_TRUE(SamePixels(far.surface, wanted)) << d.x << ',' << d.y << " width " << width;
  }
}

}  // namespace
