#include "elugraph/chromview/axis_ticks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "elugraph/chromview/tick_positions.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(AxisTicks, Choice) {
  const struct {
    bool time;
    double minStep, from, to;
    double first, step;
    const char* format;
  } cases[] = {
      {false, 3.7, 0, 0, 0, 10, "%.0f"},     // 7.4: k = 8 goes to the next power
      {false, 0.02, 0, 0, 0, 0.05, "%.2f"},  // 0.04: k = 4 goes to 5
      {false, 0, 1, 0, 2, 2, "%.0f"},        // no smallest step: 1
      {false, kNaN, 1, 0, 2, 2, "%.0f"},
      {false, 2.5, 10, 0, 10, 5, "%.0f"},                      // an origin on a tick
      {false, 0.5, -3.5, 0, -3, 1, "%.0f"},                    // toward zero is upward below zero
      {false, 5e-4, 1e7 + 5e-4, 0, 1e7 + 1e-3, 1e-3, "%.3f"},  // more steps than 32 bits count
      {true, 0.05, 0, 10, 0, 1, "%.0f"},        // "10" wants 0.15, raised to whole units
      {true, 0.001, 0, 0.15, 0, 0.01, "%.2f"},  // "0.15" wants 0.005, raised to 0.01
      {true, 0.01, 0.31, 1.31, 0.4, 0.1, "%.1f"},
      {true, 2.0, -7, 50, 0, 10, "%.0f"},
      {true, 0, 0, 10, 0, 5, "%.0f"},  // "10" wants 3 units
  };
  for (const auto& c : cases) {
    AxisTicks ticks;
    (ticks.*(c.time ? &AxisTicks::ChooseTimeTicks : &AxisTicks::ChooseValueTicks))(c.minStep,
                                                                                   c.from, c.to);
    EXPECT_DOUBLE_EQ(ticks.step, c.step) << c.minStep;
    EXPECT_NEAR(ticks.first, c.first, c.step * 1e-3) << c.minStep;
    EXPECT_FALSE(ticks.first == 0 && std::signbit(ticks.first)) << "would be written as -0";
    EXPECT_STREQ(ticks.format, c.format) << c.minStep;
  }
}

TEST(TickPositions, WalkEndsAndKeepsTheRoundingOfTheStep) {
  const auto walk = [](double first, double step, int end, int direction = 1) {
    std::vector<int> pixels;
    TickPositions(first, step)
        .Walk(
            direction, [&](int px) { return direction > 0 ? px <= end : px >= end; },
            [&](int px) { pixels.push_back(px); });
    return pixels;
  };
  EXPECT_EQ(walk(0.5, 33.4, 100), (std::vector<int>{0, 33, 67, 100}));
  EXPECT_EQ(walk(-0.5, 10, 10), (std::vector<int>{-1, 9}));  // toward the left below zero
  EXPECT_EQ(walk(100, 45, 10, -1), (std::vector<int>{100, 55, 10}));
  EXPECT_EQ(walk(40'000, 20'000, 70'000), (std::vector<int>{40'000, 60'000}));
  for (const double step : {0.0, -3.0, kInf, 1e-5}) {
    EXPECT_EQ(walk(5, step, 100), (std::vector<int>{5})) << step;
  }
  EXPECT_EQ(walk(5, 1e-4, 100).size(), std::size_t{TickPositions::kMostTicks});
  for (const double first : {kNaN, kInf, -1e300, 3e9}) EXPECT_TRUE(walk(first, 1, 9).empty());
}

}  // namespace
