#include "elugraph/plots/axis.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include "elugraph/plots/axis_ticks.h"
#include "elugraph/plots/numbers.h"

using plots::Offset;

namespace {

bool MeasureDigit(HDC hdc, SIZE& digit) { return GetTextExtentPoint32A(hdc, "0", 1, &digit) != 0; }

int TickHalfLength(SIZE digit) { return digit.cy / 4 + 1; }

void DrawTitle(HDC hdc, LONG x, LONG y, const str& title) {
  TextOutA(hdc, x, y, title.c_str(), static_cast<int>(std::strlen(title.c_str())));
}

}  // namespace

THAxis::THAxis(double first, double last, const char* title)
    : first_(first), last_(last), title_(title) {
  if (std::fabs(last_ - first_) < kMinAxisSpan) last_ = plots::WidenedEnd(last_);
}

void THAxis::Draw(HDC hdc, LONG y, LONG x0, LONG x1, UINT align) {
  const std::int64_t pixels = std::int64_t{x1} - x0;
  SIZE digit{};
  if (std::abs(pixels) < kMinSpan || !MeasureDigit(hdc, digit)) return;
  const int half = TickHalfLength(digit);

  MoveToEx(hdc, x0, y, nullptr);
  LineTo(hdc, Offset(x1, 1), y);

  SetTextAlign(hdc, align);
  LONG labelRow = y;
  if ((align & TA_BOTTOM) != 0) {
    labelRow = Offset(y, -half);
  } else if ((align & TA_BASELINE) == TA_TOP) {
    labelRow = Offset(y, half);
  }
  if (const auto ticks = plots::ChooseHorizontalTicks(first_, last_, pixels, digit.cx)) {
    const double pixelsPerUnit = static_cast<double>(pixels) / (last_ - first_);
    PrintBuffer<100> label;
    plots::ForEachTick(*ticks, last_, std::abs(pixels), [&](double value) {
      const LONG column = TruncToInt32(x0 + std::floor((value - first_) * pixelsPerUnit + 0.5));
      MoveToEx(hdc, column, Offset(y, -half), nullptr);
      LineTo(hdc, column, Offset(y, half + 1));
      const int length = sprintf(label, "%.*f", ticks->decimals, value);
      TextOutA(hdc, column, labelRow, label.text, length);
    });
  }

  const bool rightward = x0 < x1;
  SetTextAlign(hdc, TA_BOTTOM | (rightward ? TA_LEFT : TA_RIGHT));
  DrawTitle(hdc, Offset(x1, rightward ? 1 : -1), Offset(y, digit.cy / 2), title_);
}

// The axis between two rows: y grows downward, so `bottom` is the larger row.
struct TVAxis::Layout {
  LONG top;
  LONG bottom;
  SIZE digit;
  double pixelsPerUnit;
  double ceiling;  // axis units; ticks lie below it
};

TVAxis::TVAxis(double a, double b, const char* title)
    : lowest_(std::min(a, b)), highest_(std::max(a, b)), title_(title) {
  if (highest_ - lowest_ < kMinAxisSpan) highest_ = plots::WidenedEnd(highest_);
}

bool TVAxis::Prepare(HDC hdc, LONG y0, LONG y1, Layout& layout) {
  layout.top = std::min(y0, y1);
  layout.bottom = std::max(y0, y1);
  const std::int64_t pixels = std::int64_t{layout.bottom} - layout.top;
  if (pixels < kMinSpan || !MeasureDigit(hdc, layout.digit)) return false;
  layout.pixelsPerUnit = static_cast<double>(pixels) / (highest_ - lowest_);
  layout.ceiling = highest_ - (layout.digit.cy - 1) / layout.pixelsPerUnit;
  ChooseStep(layout.digit.cy / layout.pixelsPerUnit);
  return true;
}

void TVAxis::ChooseStep(double labelHeight) {
  const auto ticks = plots::ChooseVerticalTicks(lowest_, highest_, labelHeight);
  firstTick_ = ticks ? ticks->first : std::numeric_limits<double>::quiet_NaN();
  tickStep_ = ticks ? ticks->step : 1.0;
  std::snprintf(labelFormat_, sizeof labelFormat_, "%%.%df", ticks ? ticks->decimals : 0);
}

int TVAxis::Space(HDC hdc, LONG y0, LONG y1) {
  Layout layout;
  if (!Prepare(hdc, y0, y1, layout) || std::isnan(firstTick_)) return 0;
  const double steps = std::floor((layout.ceiling - firstTick_) / tickStep_ + 0.5);
  LONG widest = 0;
  for (double value : {firstTick_, firstTick_ + steps * tickStep_}) {
    char label[100];
    std::snprintf(label, sizeof label, labelFormat_, value);
    SIZE extent{};
    if (!GetTextExtentPoint32A(hdc, label, static_cast<int>(std::strlen(label)), &extent)) return 0;
    widest = std::max(widest, extent.cx);
  }
  return widest;
}

void TVAxis::Draw(HDC hdc, LONG x, LONG y0, LONG y1, UINT align) {
  Layout layout;
  if (!Prepare(hdc, y0, y1, layout)) return;
  const int half = TickHalfLength(layout.digit);

  MoveToEx(hdc, x, layout.bottom, nullptr);
  LineTo(hdc, x, Offset(layout.top, -1));

  SetTextAlign(hdc, align);
  const LONG labelColumn = Offset(x, (align & TA_RIGHT) != 0 ? -half : half);
  const plots::TickChoice ticks{firstTick_, tickStep_, 0};
  const std::int64_t pixels = std::int64_t{layout.bottom} - layout.top;
  PrintBuffer<100> label;
  plots::ForEachTick(ticks, layout.ceiling, pixels, [&](double value) {
    const double height = std::trunc((value - lowest_) * layout.pixelsPerUnit + 0.5);
    const LONG row = TruncToInt32(layout.bottom - height);
    MoveToEx(hdc, Offset(x, -half), row, nullptr);
    LineTo(hdc, Offset(x, half), row);
    const int length = sprintf(label, labelFormat_, value);
    TextOutA(hdc, labelColumn, row, label.text, length);
  });

  SetTextAlign(hdc, TA_BOTTOM | TA_CENTER);
  DrawTitle(hdc, x, Offset(layout.top, -1), title_);
}
