#include "elugraph/heightmap/kernels.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

constexpr int kModes[] = {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO};

class RoundingScope {
 public:
  explicit RoundingScope(int mode) : previous_(std::fegetround()) { std::fesetround(mode); }
  ~RoundingScope() { std::fesetround(previous_); }

 private:
  int previous_;
};

TEST(PowerOfTen, WholeExponentsNarrowToTheExactDouble) {
  const double powers[] = {1e-12, 1e-11, 1e-3, 0.01, 0.1, 1, 10, 100, 1000, 1e9, 1e15, 1e22};
  for (double power : powers) {
    const double exponent = std::nearbyint(std::log10(power));
    EXPECT_EQ(static_cast<double>(PowerOfTen(exponent)), power);
    EXPECT_EQ(static_cast<double>(kernels::PowerOfTenSeries(exponent)), power);
  }
  EXPECT_EQ(PowerOfTen(1e300), std::numeric_limits<long double>::infinity());
  EXPECT_EQ(PowerOfTen(-1e300), 0);
  EXPECT_TRUE(std::isnan(PowerOfTen(std::numeric_limits<double>::quiet_NaN())));
}

TEST(DotProducts, KeepSumsThatDoublesLose) {
  const std::int32_t counts[] = {2147483647, 2147483647};
  const double ones[] = {1, 1};
  EXPECT_EQ(DotIntDouble(counts, ones, 2), 4294967294.0L);
  if (LDBL_MANT_DIG == 64) {
    const double a[] = {9007199254740992.0, 1, -9007199254740992.0};  // 2^53 + 1 is no double
    const double b[] = {1, 1, 1};
    EXPECT_EQ(DotDouble(a, b, 3), 1);
  }
}

TEST(RoundToInt, TiesToEvenAndSaturatesInEveryMode) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double below = std::nextafter(0.5, 0);
  struct {
    std::int32_t wanted;
    std::vector<double> of;
  } const cases[] = {
      {2, {1.5, 2.5}},
      {0, {0.5, below, 5e-324, -0.0}},
      {2147483646, {2147483646.5}},
      {INT32_MAX, {2147483647.4999995, 2147483647.5, 2147483648.0, 3e9, infinity, nan}},
      {INT32_MIN, {-2147483647.5, -2147483648.0, -2147483648.5, -3e9, -infinity, -nan}},
  };
  for (int mode : kModes) {
    RoundingScope scope(mode);
    for (const auto& c : cases) {
      for (double x : c.of) {
        std::feclearexcept(FE_ALL_EXCEPT);
        const std::int32_t rounded = RoundToInt(x);
        EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT), 0) << x;
        EXPECT_EQ(rounded, c.wanted) << x << " in mode " << mode;
      }
    }
  }
}

TEST(RoundToInt, AgreesWithTheUnitRoundingToNearest) {
  std::mt19937_64 random(2);
  std::uniform_real_distribution<double> values(-2147483648.0, 2147483647.0);
  for (int i = 0; i < 100000; ++i) {
    const double x = std::ldexp(values(random), -static_cast<int>(random() % 32));
    ASSERT_EQ(RoundToInt(x), static_cast<std::int32_t>(std::nearbyint(x))) << x;
  }
}

}  // namespace
