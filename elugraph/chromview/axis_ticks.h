// Choice of the ticks of the chromatogram's axes, apart from any device.
#pragma once

#include "platform/gfx/types.h"

// Ticks stand at first, first + step, …; the step is 1, 2 or 5 times a power of ten. Every result
// is defined: a smallest step that is not positive (or NaN) counts as 1; a step beyond what doubles
// hold gives a `first` that is not finite.
struct AxisTicks {
  double first;
  double step;
  LONG exponent;    // decimal, of the step's magnitude
  double power;     // 10 to the power `exponent`
  char format[20];  // printf format of the numbers, for one double

  // Time axis from `from` to `to`: a step leaves room for a number and one character. `minStep`:
  // the width of a character in axis units. One or two decimals for ranges below 2 or 0.2.
  void ChooseTimeTicks(double minStep, double from, double to);
  // Value axis whose origin has the value `from`. `minStep`: half of the smallest distance between
  // numbers, in axis units. The third argument is not used.
  void ChooseValueTicks(double minStep, double from, double);

 private:
  void SetMagnitude();
  void RoundStep(double from);
};
