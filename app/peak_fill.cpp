#include "app/peak_fill.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "elugraph/trace/get_time.h"

namespace app {
namespace {

COLORREF Mean(COLORREF a, COLORREF b) {
  constexpr COLORREF kHighBits = 0x7F7F7F;
  return ((a >> 1) & kHighBits) + ((b >> 1) & kHighBits) + (a & b & 0x010101);
}

// A brush and a pen, which the caller keeps, for as long as it lives.
class Filling {
 public:
  Filling(HDC hdc, COLORREF colour, HGDIOBJ pen) : hdc_(hdc), brush_(CreateSolidBrush(colour)) {
    SaveDC(hdc_);
    SelectObject(hdc_, brush_);
    SelectObject(hdc_, pen);
  }
  Filling(const Filling&) = delete;
  Filling& operator=(const Filling&) = delete;
  ~Filling() {
    RestoreDC(hdc_, -1);
    DeleteObject(brush_);
  }

 private:
  HDC hdc_;
  HBRUSH brush_;
};

// The trace from the peak's start to its end, in the columns in which the view draws it, and back
// along the baseline.
class Outline {
 public:
  Outline(Plot& plot, std::size_t channel)
      : plot_(plot),
        channel_(plot.Channel(channel)),
        rows_(plot.Rows(channel)),
        columns_(&plot.Channel(channel), plot.view.t0, plot.view.t1 - plot.view.t0,
                 static_cast<ULONG>(plot.view.plotWidth),
                 static_cast<double>(plot.Channel(channel).samplePeriod), plot.view.timePerPixel) {}

  std::vector<POINT> Of(const PeakRecord& peak) {
    std::vector<POINT> points;
    for (LONG i = peak.start; i <= peak.end; ++i) Add({X(i), rows_.Pixel(i)}, points);
    Add({X(peak.end), Row(peak.baselineEnd, peak.end)}, points);
    Add({X(peak.start), Row(peak.baselineStart, peak.start)}, points);
    return points;
  }

 private:
  static void Add(POINT point, std::vector<POINT>& points) {
    if (!points.empty() && points.back().x == point.x && points.back().y == point.y) return;
    points.push_back(point);
  }
  LONG X(LONG sample) {
    FixedPoint64 time;
    if (columns_.channel != nullptr) {  // has a time table
      time = FixedPoint64::OfWhole(channel_.times[sample] - channel_.timeBase - columns_.start);
    } else {
      time.value = columns_.period.value * sample - FixedPoint64::OfWhole(columns_.start).value;
    }
    constexpr double kPerSecond = 1000.0 * 4294967296.0;
    return plot_.view.x0 + static_cast<LONG>(std::floor(static_cast<double>(time.value) /
                                                        kPerSecond / plot_.view.timePerPixel));
  }
  LONG Row(LONG value, LONG sample) const {
    constexpr double kLimit = 16'382;
    return static_cast<LONG>(std::clamp(rows_.ToY(value, sample), -kLimit, kLimit));
  }

  Plot& plot_;
  const TChannel& channel_;
  YVAL rows_;
  GetTime columns_;
};

void FillChannel(Plot& plot, std::size_t channel) {
  const Filling filling(plot.hdc, Mean(plot.view.colours.back(), plot.Colour(channel)),
                        GetStockObject(NULL_PEN));
  plot.host.basecalc(static_cast<int>(channel));
  Outline outline(plot, channel);
  for (int k = 1; k <= plot.host.peaks.count; ++k) {
    if (!plot.IsFilled(k)) continue;
    const std::vector<POINT> points = outline.Of(*plot.host.peaks.At(k - 1));
    Polygon(plot.hdc, points.data(), static_cast<int>(points.size()));
  }
}

void DrawArrow(Plot& plot, LONG sample, int kind) {
  const double time = static_cast<double>(plot.host.sampleInterval) * sample;
  const int x = static_cast<int>(
      std::floor(plot.view.x0 + (time - plot.view.t0) / plot.view.timePerPixel + 0.5));
  plot.render.DrawArrowMarker(plot.hdc, x, plot.Rows(plot.Current()).Pixel(sample), kind,
                              {plot.render.charWidth, plot.render.charHeight});
}

void ClipToPlot(Plot& plot) {
  IntersectClipRect(plot.hdc, plot.view.x0, 0, plot.render.width - plot.render.rightReserve,
                    plot.render.height);
}

}  // namespace

void FillPeaks(Plot& plot) {
  SaveDC(plot.hdc);
  ClipToPlot(plot);
  for (std::size_t c = 0; c < plot.run.channels.size(); ++c) {
    if (plot.render.markMode == 0 || c == plot.Current()) FillChannel(plot, c);
  }
  plot.host.recalctime();  // back to the current channel's peaks
  RestoreDC(plot.hdc, -1);
}

void DrawArrows(Plot& plot) {
  constexpr int kLeft = 4, kRight = 5, kDown = 6;
  const int selected = plot.options.selectedPeak;
  if (plot.options.markers != Markers::kSelected || selected < 1 ||
      selected > plot.host.peaks.count) {
    return;
  }
  const HPEN pen =
      CreatePen(PS_SOLID, static_cast<int>(plot.view.thickness[0] * plot.render.charHeight / 100),
                plot.Colour(plot.Current()));
  {
    const Filling arrows(plot.hdc, plot.view.colours.back(), pen);
    ClipToPlot(plot);
    const PeakRecord& peak = *plot.host.peaks.At(selected - 1);
    DrawArrow(plot, peak.start, kLeft);
    DrawArrow(plot, peak.apex, kDown);
    DrawArrow(plot, peak.end, kRight);
  }
  DeleteObject(pen);
}

}  // namespace app
