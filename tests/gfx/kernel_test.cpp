#include "platform/kernel/kernel.h"

#include "tests/gfx/gdi_fixture.h"

namespace {

TEST(MulDiv, RoundsHalvesAwayFromZero) {
  // number, numerator, denominator, result
  const int cases[][4] = {{7, 3, 2, 11},      {-7, 3, 2, -11},   {7, -3, 2, -11},
                          {7, 3, -2, -11},    {-7, -3, -2, -11}, {10, 1, 3, 3},
                          {11, 1, 3, 4},      {5, 5, 0, -1},     {kMax, kMax, kMax, kMax},
                          {kMin, 1, -1, -1},  {kMax, 2, 1, -1},  {kMin, kMin, kMin, kMin},
                          {kMin, 1, 1, kMin}, {1, 1, kMin, 0},   {kMin, kMin, kMax, -1}};
  for (const auto& c : cases) EXPECT_EQ(MulDiv(c[0], c[1], c[2]), c[3]) << c[0] << " " << c[1];
}

}  // namespace
