#include "elugraph/chromview/axis_ticks.h"

#include <cmath>
#include <cstdio>

#include "elugraph/trace/arithmetic.h"

namespace {

double Usable(double minStep) { return minStep > 0 ? minStep : 1.0; }

int PrintedLength(const char* format, double value) {
  char text[512];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  const int length = std::snprintf(text, sizeof text, format, value);
#pragma GCC diagnostic pop
  return length < 0 ? 0 : length;
}

}  // namespace

void AxisTicks::SetMagnitude() {
  exponent = TruncToInt32(std::floor(std::log10(std::abs(step))));
  power = std::pow(10.0, exponent);
}

// Rounds the step up to 1, 2 or 5 times its power of ten and finds the first multiple of it at or
// above `from` (for negative values, the one or two next above).
void AxisTicks::RoundStep(double from) {
  int k = TruncToInt32(std::ceil(step / power));
  if (k <= 1) {
    k = 1;
  } else if (k > 5) {
    k = 1;
    ++exponent;
    power *= 10.0;
  } else if (k > 2) {
    k = 5;
  }
  step = k * power;
  // Whole numbers in doubles: the same as integers where those hold them, once −0 is gone.
  first = (std::trunc(std::trunc(from / power) / k) + 0.0) * k * power;
  if (from > first) first += step;
}

void AxisTicks::ChooseValueTicks(double minStep, double from, double) {
  step = 2 * Usable(minStep);
  SetMagnitude();
  RoundStep(from);
  if (exponent < 0) {
    std::snprintf(format, sizeof format, "%%.%df", -exponent);
  } else {
    std::snprintf(format, sizeof format, "%%.0f");
  }
}

void AxisTicks::ChooseTimeTicks(double minStep, double from, double to) {
  const double range = to - from;
  const int decimals = range < 0.2 ? 2 : range < 2.0 ? 1 : 0;
  std::snprintf(format, sizeof format, "%%.%df", decimals);
  step = (PrintedLength(format, to) + 1) * Usable(minStep);
  SetMagnitude();
  const double smallest = decimals == 2 ? 0.01 : decimals == 1 ? 0.1 : 1.0;
  if (step < smallest) {
    exponent = -decimals;
    step = power = smallest;
  }
  RoundStep(from);
}
