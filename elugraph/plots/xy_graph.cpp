#include "elugraph/plots/xy_graph.h"

#include <cmath>
#include <cstdint>
#include <utility>

#include "elugraph/plots/axis.h"
#include "elugraph/plots/device_scopes.h"
#include "elugraph/plots/numbers.h"
#include "elugraph/plots/series_line.h"
#include "elugraph/plots/text_sinks.h"
#include "elugraph/trace/gdi_object_holders.h"

using plots::Offset;
using plots::Span;

namespace {

constexpr double kHugeSpan = 1e100;
constexpr double kMinSpan = 1e-100;
constexpr int kMinPlot = 10;         // pixels
constexpr double kMostZoom = 10000;  // full range over view
constexpr double kMostView = 2;      // view over full range
constexpr double kMarginParts = 20;  // of the vertical range

constexpr COLORREF kPalette[16] = {0x000000, 0x0000F0, 0xF00000, 0x00F000, 0x808000, 0x800080,
                                   0x008080, 0x800000, 0x008000, 0x000080, 0x804000, 0x004080,
                                   0x800040, 0x008040, 0x400080, 0x408000};

COLORREF SeriesColor(int series) { return kPalette[series % 16]; }

void Widen(double value, double& low, double& high) {
  if (value < low) low = value;
  if (value > high) high = value;
}

void Complete(double& low, double& high) {
  if (!(std::fabs(high - low) <= kHugeSpan)) {
    low = 0;
    high = 1;
  }
  if (high - low < kMinSpan) high = plots::WidenedEnd(high);
}

TXYGraph::Range DataRange(IXYGraphData& data, int count) {
  TXYGraph::Range range{kHugeSpan, -kHugeSpan, kHugeSpan, -kHugeSpan};
  for (int series = 0; series < count; ++series) {
    const int points = data.Points(series);
    for (int point = 0; point < points; ++point) {
      Widen(data.X(series, point), range.xLow, range.xHigh);
      Widen(data.Y(series, point), range.yLow, range.yHigh);
    }
  }
  Complete(range.xLow, range.xHigh);
  Complete(range.yLow, range.yHigh);
  return range;
}

void Scale(double fullSpan, double low, double& high, double factor) {
  const double span = (high - low) * factor;
  if (span >= fullSpan / kMostZoom && span <= kMostView * fullSpan) high = low + span;
}

void Scroll(double fullLow, double fullHigh, double& low, double& high, double fraction) {
  const double distance = (high - low) * fraction;
  if (low + distance <= fullHigh && high + distance >= fullLow) {
    low += distance;
    high += distance;
  }
}

// Room for a title: the text and `gap`, or `alone` for an empty title.
int TitleRoom(int width, int size, int gap, int alone) { return width > 0 ? size + gap : alone; }

}  // namespace

TXYGraph::TXYGraph() = default;

bool TXYGraph::SetXYData(IXYGraphData* data) {
  data_ = data;
  return true;
}

COLORREF TXYGraph::SetBackgrtound(COLORREF color) { return std::exchange(background_, color); }
COLORREF TXYGraph::SetAxisColor(COLORREF color) { return std::exchange(axisColor_, color); }

void TXYGraph::ViewAll() {
  try {
    const int count = data_ != nullptr ? data_->Count() : 0;
    if (count <= 0) {
      full_ = view_ = {0, 1, 0, 1};
      return;
    }
    full_ = view_ = DataRange(*data_, count);
    full_.yHigh += (full_.yHigh - full_.yLow) / kMarginParts;
    full_.yLow -= (full_.yHigh - full_.yLow) / kMarginParts;
    if (full_.yLow > 0) full_.yLow = 0;
  } catch (...) {  // the source's failure: the ranges stay
  }
}

void TXYGraph::ScaleX(double factor) {
  Scale(full_.xHigh - full_.xLow, view_.xLow, view_.xHigh, factor);
}
void TXYGraph::ScaleY(double factor) {
  Scale(full_.yHigh - full_.yLow, view_.yLow, view_.yHigh, factor);
}
void TXYGraph::ScrollX(double fraction) {
  Scroll(full_.xLow, full_.xHigh, view_.xLow, view_.xHigh, fraction);
}
void TXYGraph::ScrollY(double fraction) {
  Scroll(full_.yLow, full_.yHigh, view_.yLow, view_.yHigh, fraction);
}

void TXYGraph::Render(HDC hdc, const RECT& rect) {
  try {
    const int count = data_ != nullptr ? data_->Count() : 0;
    const HBRUSH brush = CreateSolidBrush(background_);
    FillRect(hdc, &rect, brush);
    DeleteObject(brush);
    if (count > 0) RenderSeries(hdc, rect, count);
  } catch (...) {  // the source's failure ends the drawing
  }
}

void TXYGraph::RenderSeries(HDC hdc, const RECT& rect, int count) {
  const plots::StateScope state(hdc);
  SetBkMode(hdc, TRANSPARENT);
  SetMapMode(hdc, MM_TEXT);
  if (!Layout(hdc, rect, count) || !DrawAxes(hdc)) return;

  SetTextAlign(hdc, TA_LEFT | TA_TOP);
  for (int series = 0; series < count; ++series) {
    DrawSeries(hdc, series);
    SetTextColor(hdc, SeriesColor(series));
    plots::TextOutSink legend(hdc, Offset(rect.right, -std::int64_t{legendWidth_}),
                              Offset(plot_.top, std::int64_t{series} * legendLineHeight_));
    data_->Name(series, legend);
  }
}

bool TXYGraph::Layout(HDC hdc, const RECT& rect, int count) {
  SIZE digit{};
  GetTextExtentPoint32A(hdc, "0", 1, &digit);

  plots::TextMeasureSink names(hdc);
  for (int series = 0; series < count; ++series) data_->Name(series, names);
  legendWidth_ = names.width + digit.cx;
  legendLineHeight_ = names.height;

  // The x title stands right of the plot, the y title above it, the numbers left of and below it.
  plots::TextMeasureSink xTitle(hdc);
  data_->XTitle(xTitle);
  plots::TextMeasureSink yTitle(hdc);
  data_->YTitle(yTitle);
  plot_.right = Offset(rect.right, -TitleRoom(xTitle.width, xTitle.width, digit.cx, digit.cx));
  plot_.top = Offset(rect.top, TitleRoom(yTitle.width, yTitle.height, digit.cy / 2 + 1, digit.cy));
  plot_.bottom = Offset(rect.bottom, -(digit.cy + digit.cy / 2 + 1));
  const int numbers = TVAxis(view_.yLow, view_.yHigh, nullptr).Space(hdc, plot_.top, plot_.bottom);
  plot_.left = Offset(rect.left, numbers + digit.cx + digit.cx / 2 + 1);
  return Span(plot_.left, plot_.right) > kMinPlot && Span(plot_.top, plot_.bottom) > kMinPlot;
}

bool TXYGraph::DrawAxes(HDC hdc) {
  const HPEN pen = CreatePen(PS_SOLID, 0, axisColor_);
  const GdiObjectSelector selected(hdc, pen);
  if (pen == nullptr || GetCurrentObject(hdc, OBJ_PEN) != pen) return false;
  const COLORREF textColor = SetTextColor(hdc, axisColor_);

  str xTitle;
  plots::TextCollector xCollector(xTitle);
  data_->XTitle(xCollector);
  str yTitle;
  plots::TextCollector yCollector(yTitle);
  data_->YTitle(yCollector);
  THAxis(view_.xLow, view_.xHigh, xTitle.c_str())
      .Draw(hdc, plot_.bottom, plot_.left, plot_.right, TA_CENTER | TA_TOP);
  TVAxis(view_.yLow, view_.yHigh, yTitle.c_str())
      .Draw(hdc, plot_.left, plot_.bottom, plot_.top, TA_BASELINE | TA_RIGHT);
  SetTextColor(hdc, textColor);
  return true;
}

void TXYGraph::DrawSeries(HDC hdc, int series) {
  const plots::ClipScope clip(hdc, plot_);
  const int points = data_->Points(series);
  if (points < 2) return;
  const HPEN pen = CreatePen(PS_SOLID, 0, SeriesColor(series));
  const GdiObjectSelector selected(hdc, pen);
  if (pen == nullptr || GetCurrentObject(hdc, OBJ_PEN) != pen) return;

  const double xScale = Span(plot_.left, plot_.right) / (view_.xHigh - view_.xLow);
  const double yScale = Span(plot_.top, plot_.bottom) / (view_.yHigh - view_.yLow);
  SetTextAlign(hdc, TA_BASELINE);
  plots::SeriesLine line(points, plot_, hdc);
  for (int point = 0; point < points; ++point) {
    const double x = data_->X(series, point);
    const double y = data_->Y(series, point);
    line.Add(plot_.left + std::floor((x - view_.xLow) * xScale + 0.5),
             plot_.bottom - std::floor((y - view_.yLow) * yScale + 0.5));
  }
  line.Finish();
}
