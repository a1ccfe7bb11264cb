// Straight numeric axes that choose their own ticks.
//
// Both draw an axis line, ticks, a number at each tick and a title with whatever pen, font, text
// colour and background mode the device context has, and leave its text alignment changed. They
// measure the digit "0" to keep numbers apart. Positions are logical units of the context (pixels);
// a span of fewer than kMinSpan pixels, or a font that cannot be measured, draws nothing. An axis
// whose range is not finite draws its line and title only, and no axis draws more ticks than it
// has pixels, or than 100 000. Plain values; the only resource is the title.
#pragma once

#include "elugraph/host/export.h"
#include "elugraph/host/kernel.h"
#include "platform/gfx/gdi.h"

class ELUGRAPH_API THAxis {
 public:
  static constexpr int kMinSpan = 5;             // pixels
  static constexpr double kMinAxisSpan = 1e-27;  // axis units

  // `first` lies at the start column, `last` at the end column; `last` may be the smaller one.
  // Values closer than kMinAxisSpan are widened: `last` becomes 1 more (or, where doubles of that
  // size are further apart, the next one). A null title is the empty one.
  THAxis(double first, double last, const char* title);

  // On row `y` from column `x0` to column `x1` (both drawn; x1 may be the left one). `align` is the
  // TA_ value of the numbers: they stand below the axis for TA_TOP, above it for TA_BOTTOM and
  // TA_BASELINE. The last value gets no tick. The title stands beyond x1.
  void Draw(HDC hdc, LONG y, LONG x0, LONG x1, UINT align);

 private:
  double first_;
  double last_;
  str title_;
};

class ELUGRAPH_API TVAxis {
 public:
  static constexpr int kMinSpan = 5;              // pixels
  static constexpr double kMinAxisSpan = 1e-100;  // axis units

  // In either order; the larger value lies at the top. Values closer than kMinAxisSpan are widened
  // as those of THAxis.
  TVAxis(double a, double b, const char* title);

  // Width in pixels of the wider one of the lowest and the highest number that Draw puts between
  // the rows (in either order); 0 where it cannot tell. A number of more than 99 characters
  // counts as 99.
  int Space(HDC hdc, LONG y0, LONG y1);
  // On column `x` between the rows, in either order, both drawn. `align` is the TA_ value of the
  // numbers: left of the axis with TA_RIGHT or TA_CENTER, right of it with TA_LEFT. No tick stands
  // within a digit's height of the top. The title stands centred above the top.
  void Draw(HDC hdc, LONG x, LONG y0, LONG y1, UINT align);

  // Sets step, first tick and number format for numbers `labelHeight` axis units high.
  void ChooseStep(double labelHeight);

 private:
  struct Layout;
  ELUGRAPH_INTERNAL bool Prepare(HDC hdc, LONG y0, LONG y1, Layout& layout);

  double lowest_;
  double highest_;
  str title_;
  double firstTick_;  // NaN: no ticks
  double tickStep_;
  char labelFormat_[20];
};
