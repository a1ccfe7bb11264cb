#include "app/picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <vector>

#include "app/host_run.h"
#include "elugraph/trace/arithmetic.h"
#include "elugraph/trace/each_point.h"
#include "elugraph/trace/get_time.h"
#include "elugraph/trace/poly_line_pool.h"
#include "elugraph/trace/yval.h"
#include "platform/gfx/context.h"
#include "platform/gfx/gdi.h"
#include "platform/gfx/text_engine.h"

namespace app {
namespace {

// Distinguishable with deficient colour vision (Okabe and Ito, 2008), dark on white.
constexpr std::array kColors = {RGB(0, 114, 178),   RGB(213, 94, 0),   RGB(0, 158, 115),
                                RGB(204, 121, 167), RGB(86, 180, 233), RGB(230, 159, 0),
                                RGB(0, 0, 0),       RGB(120, 94, 60)};
constexpr COLORREF kFrameColor = RGB(150, 150, 150);
// Part of the plot height that stays free above the largest and below the smallest value.
constexpr double kHeadroom = 0.04;

// A pen, selected for its lifetime.
class SelectedPen {
 public:
  SelectedPen(HDC hdc, int widthPx, COLORREF color)
      : hdc_(hdc), pen_(CreatePen(PS_SOLID, widthPx, color)), previous_(SelectObject(hdc, pen_)) {}
  SelectedPen(const SelectedPen&) = delete;
  SelectedPen& operator=(const SelectedPen&) = delete;
  ~SelectedPen() {
    SelectObject(hdc_, previous_);
    DeleteObject(pen_);
  }

 private:
  HDC hdc_;
  HPEN pen_;
  HGDIOBJ previous_;
};

struct View {
  double fromS;
  double toS;
  RECT plot;
  double Span() const { return toS - fromS; }
  int Width() const { return plot.right - plot.left; }
  int Height() const { return plot.bottom - plot.top; }
};

struct Range {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();
  void Add(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
};

void AddVisible(const Trace& trace, const View& view, Range& range) {
  for (std::size_t i = 0; i < trace.values.size(); ++i) {
    const double time = trace.TimeAt(i);
    if (time >= view.fromS && time <= view.toS) range.Add(trace.values[i]);
  }
}

// With room at both ends. An empty range shows around zero, a flat one around its value.
Range Padded(Range range) {
  if (range.low > range.high) return {-1, 1};
  const double span = range.high - range.low;
  const double pad = span > 0 ? span * kHeadroom : std::max(std::abs(range.high) * 0.1, 1e-6);
  return {range.low - pad, range.high + pad};
}

View ViewOf(const RunData& run, const PictureOptions& options) {
  Range times;
  for (const Trace& trace : run.channels) {
    times.Add(trace.TimeAt(0));
    times.Add(trace.TimeAt(trace.values.size() - 1));
  }
  const int marginPx = std::max(4, std::min(options.widthPx, options.heightPx) / 30);
  return {options.fromS.value_or(times.low),
          options.toS.value_or(times.high),
          {marginPx, marginPx, options.widthPx - marginPx, options.heightPx - marginPx}};
}

// The records count times from the run's first sample.
void DrawTrace(HDC hdc, TChannel& channel, double startS, const View& view, const Range& range,
               bool average) {
  const double unitsPerPixel = (range.high - range.low) / view.Height();
  // Small differences of large values must not become large coordinates.
  channel.zero = TruncToInt32(range.low / static_cast<double>(channel.unitsPerCount));
  GetTime time(&channel, startS, view.Span(), static_cast<ULONG>(view.Width()),
               static_cast<double>(channel.GetCyctimeRT()), view.Span() / view.Width());
  YVAL yval(&channel, view.plot.bottom, unitsPerPixel, false, 0, 0);
  PolyLinePool pool(4 * view.plot.right + 16, &view.plot, hdc);
  EachPoint points(pool, yval, time, 0, view.plot.left, view.plot.right, nullptr, nullptr);
  points.Draw(TruncToInt32(startS * 1000), 1, channel.samples, channel.sampleCount, !average, 0,
              nullptr);
}

}  // namespace

bool DrawPicture(const RunData& run, const PictureOptions& options, gfx::Surface& surface,
                 std::string& error) {
  const View view = ViewOf(run, options);
  if (!(view.Span() > 0)) {
    error = "nothing lies between --from and --to: the time range is empty";
    return false;
  }
  const embedded::RunRef host = HostRun(run, error);
  if (host == nullptr) return false;
  std::map<std::string, Range> ranges;  // by unit
  for (const Trace& trace : run.channels) AddVisible(trace, view, ranges[trace.unit]);

  surface = gfx::Surface(options.widthPx, options.heightPx);
  const HDC hdc = gfx::CreateRasterContext(surface, gfx::SystemText());
  SelectObject(hdc, GetStockObject(NULL_BRUSH));
  {
    const SelectedPen pen(hdc, 1, kFrameColor);
    Rectangle(hdc, view.plot.left, view.plot.top, view.plot.right, view.plot.bottom);
  }
  IntersectClipRect(hdc, view.plot.left, view.plot.top, view.plot.right, view.plot.bottom);
  const double startS = view.fromS - host->timeOffsetMs / 1000.0;
  const int penPx = std::max(1, options.heightPx / 700);
  for (std::size_t i = 0; i < run.channels.size(); ++i) {
    const SelectedPen pen(hdc, penPx, kColors[i % kColors.size()]);
    DrawTrace(hdc, *host->channels.At(static_cast<LONG>(i)), startS, view,
              Padded(ranges[run.channels[i].unit]), options.average);
  }
  DeleteDC(hdc);
  return true;
}

}  // namespace app
