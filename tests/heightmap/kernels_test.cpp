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

template <typename Function>
long double Under(int mode, Function function) {
  RoundingScope scope(mode);
  const long double value = function();
  EXPECT_EQ(std::fegetround(), mode);
  return value;
}

TEST(PowerOfTen, WholeExponentsNarrowToTheExactDouble) {
  const double powers[] = {1e-12, 1e-11, 1e-3, 0.01, 0.1, 1, 10, 100, 1000, 1e9, 1e15, 1e22};
  for (double power : powers) {
    const double exponent = std::nearbyint(std::log10(power));
    EXPECT_EQ(static_cast<double>(PowerOfTen(exponent)), power);
  }
  EXPECT_NEAR(static_cast<double>(PowerOfTen(2.5)), 316.22776601683796, 1e-13);
  EXPECT_EQ(PowerOfTen(1e300), std::numeric_limits<long double>::infinity());
  EXPECT_EQ(PowerOfTen(-1e300), 0);
  EXPECT_TRUE(std::isnan(PowerOfTen(std::numeric_limits<double>::quiet_NaN())));
  EXPECT_TRUE(std::isnan(PowerOfTen(std::numeric_limits<double>::infinity())));
}

// A library call that rounds to nearest inside would give the same value in every mode.
TEST(PowerOfTen, FollowsTheRoundingMode) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> exponents(-30, 30);
  int differing = 0;
  for (int i = 0; i < 1000; ++i) {
    const double x = exponents(random);
    const long double nearest = PowerOfTen(x);
    const auto unitsOff = [&](long double value) {
      return std::fabs(value / nearest - 1) / LDBL_EPSILON;
    };
    // The exponent x log2(10) < 128 carries up to 2^-56 of rounding error: 90 units of the result,
    // and half as much in the value compared with.
    for (int mode : kModes) {
      EXPECT_LT(unitsOff(Under(mode, [&] { return PowerOfTen(x); })), 140) << x;
      EXPECT_LT(unitsOff(Under(mode, [&] { return kernels::PowerOfTenSeries(x); })), 140) << x;
    }
    const long double down = Under(FE_DOWNWARD, [&] { return PowerOfTen(x); });
    differing += down < Under(
                            FE_UPWARD, [&] { return PowerOfTen(x); });
  }
  EXPECT_GT(differing, 900);
}

TEST(DotProducts, KeepSumsThatDoublesLose) {
  const std::int32_t counts[] = {2147483647, 2147483647};
  const double ones[] = {1, 1};
  EXPECT_EQ(DotIntDouble(counts, ones, 2), 4294967294.0L);
  EXPECT_EQ(DotIntDouble(nullptr, nullptr, 0), 0);
  EXPECT_EQ(DotDouble(nullptr, nullptr, 0), 0);
  if (LDBL_MANT_DIG == 64) {
    const double a[] = {9007199254740992.0, 1, -9007199254740992.0};  // 2^53 + 1 is no double
    const double b[] = {1, 1, 1};
    EXPECT_EQ(DotDouble(a, b, 3), 1);
  }
}

TEST(DotProducts, FollowTheRoundingMode) {
  const double tenth[] = {0.1};
  const std::int32_t odd[] = {1234567891};
  const double coefficients[] = {0.1, 0.1};
  const auto dot = [&] { return DotDouble(tenth, tenth, 1); };
  const auto mixed = [&] { return DotIntDouble(odd, tenth, 1); };
  const auto polynomial = [&] { return EvalPolynomial(0.1, 1, coefficients); };
  EXPECT_LT(Under(FE_DOWNWARD, dot), Under(FE_UPWARD, dot));
  EXPECT_LT(Under(FE_TOWARDZERO, mixed), Under(FE_UPWARD, mixed));
  EXPECT_LT(Under(FE_DOWNWARD, polynomial), Under(FE_UPWARD, polynomial));
}

TEST(EvalPolynomial, ConstantTermFirst) {
  const double coefficients[] = {1, 2, 3};
  EXPECT_EQ(EvalPolynomial(2, 2, coefficients), 17);
  EXPECT_EQ(EvalPolynomial(2, 0, coefficients), 1);
  EXPECT_EQ(EvalPolynomial(2, -1, nullptr), 0);
}

TEST(RoundToInt, TiesToEvenAndSaturatesInEveryMode) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double above = std::nextafter(0.5, 1);
  const double below = std::nextafter(0.5, 0);
  struct {
    std::int32_t wanted;
    std::vector<double> of;
  } const cases[] = {
      {2, {1.5, 2.5}},
      {4, {3.5}},
      {-2, {-2.5}},
      {-4, {-3.5}},
      {0, {0.5, below, 5e-324, -0.0}},
      {1, {above}},
      {-1, {-0.75, -above}},
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
    EXPECT_EQ(std::fegetround(), mode);
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
