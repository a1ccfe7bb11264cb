#include "app/trace_bands.h"

#include <algorithm>
#include <limits>

namespace app {
namespace {

constexpr Band kNoBand{std::numeric_limits<LONG>::max(), std::numeric_limits<LONG>::min()};

// The rows of a straight line, in every column that it touches.
void AddSegment(TraceBands& bands, double x0, double y0, double x1, double y1) {
  const auto last = static_cast<double>(bands.size()) - 1;
  if (!(x1 >= 0 && x0 <= last)) return;
  const LONG from = static_cast<LONG>(std::max(x0, 0.0));
  const LONG to = static_cast<LONG>(std::min(x1, last));
  for (LONG x = from; x <= to; ++x) {
    // Where the line enters and leaves the column.
    const auto at = [&](double edge) {
      return x1 > x0 ? y0 + (y1 - y0) * (std::clamp(edge, x0, x1) - x0) / (x1 - x0) : y0;
    };
    const double enter = at(x);
    const double leave = x1 > x0 ? at(x + 1.0) : y1;
    Band& band = bands[static_cast<std::size_t>(x)];
    band.top = std::min(band.top, static_cast<LONG>(std::min(enter, leave)));
    band.bottom = std::max(band.bottom, static_cast<LONG>(std::max(enter, leave)));
  }
}

TraceBands BandsOf(const Plot& plot, const Trace& trace, const YVAL& rows) {
  const LONG columns = std::max<LONG>(plot.render.width - plot.render.rightReserve, 1);
  TraceBands bands(static_cast<std::size_t>(columns), kNoBand);
  double lastX = 0;
  double lastY = 0;
  for (std::size_t i = 0; i < trace.values.size(); ++i) {
    const double time = trace.TimeAt(i) - plot.OffsetS();
    const double x = plot.view.x0 + (time - plot.view.t0) / plot.view.timePerPixel;
    const double y = rows.Pixel(static_cast<int>(i));
    if (i == 0) {
      lastX = x;
      lastY = y;
    }
    AddSegment(bands, lastX, lastY, x, y);
    lastX = x;
    lastY = y;
  }
  return bands;
}

// The areas under a channel's filled peaks.
void AddAreas(Plot& plot, std::size_t channel, TraceBands& bands) {
  const Trace& trace = plot.run.channels[channel];
  const YVAL rows = plot.Rows(channel);
  const auto column = [&](LONG sample) {
    const double time = trace.TimeAt(static_cast<std::size_t>(sample)) - plot.OffsetS();
    return plot.view.x0 + (time - plot.view.t0) / plot.view.timePerPixel;
  };
  plot.host.basecalc(static_cast<int>(channel));
  for (int k = 1; k <= plot.host.peaks.count; ++k) {
    const PeakRecord& peak = *plot.host.peaks.At(k - 1);
    if (!plot.IsFilled(k)) continue;
    AddSegment(bands, column(peak.start), rows.ToY(peak.baselineStart, peak.start),
               column(peak.end), rows.ToY(peak.baselineEnd, peak.end));
  }
  plot.host.recalctime();  // back to the current channel's peaks
}

}  // namespace

std::vector<TraceBands> BandsOf(Plot& plot, bool ownAreas) {
  std::vector<TraceBands> all;
  for (std::size_t c = 0; c < plot.run.channels.size(); ++c) {
    all.push_back(BandsOf(plot, plot.run.channels[c], plot.Rows(c)));
    if (ownAreas || c != plot.Current()) AddAreas(plot, c, all.back());
  }
  for (std::size_t c = 0; c < plot.run.auxiliary.size(); ++c) {
    all.push_back(BandsOf(plot, plot.run.auxiliary[c], plot.AuxRows(c)));
  }
  return all;
}

}  // namespace app
