#include "elugraph/chromview/axis_ticks.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TEST(AxisTicks, Choice) {
  const struct {
    bool time;
    double minStep, from, to;
    double first, step;
    const char* format;
  } cases[] = {
      {false, 3.7, 0, 0, 0, 10, "%.0f"},        // 7.4: k = 8 goes to the next power
      {false, 0.02, 0, 0, 0, 0.05, "%.2f"},     // 0.04: k = 4 goes to 5
      {false, 0, 1, 0, 2, 2, "%.0f"},           // no smallest step: 1
      {false, 0.5, -3.5, 0, -3, 1, "%.0f"},     // toward zero is upward below zero
      {true, 0.05, 0, 10, 0, 1, "%.0f"},        // "10" wants 0.15, raised to whole units
      {true, 0.001, 0, 0.15, 0, 0.01, "%.2f"},  // "0.15" wants 0.005, raised to 0.01
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

}  // namespace
