#include "app/picture.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "app/channel_names.h"
#include "app/fit.h"
#include "app/host_amounts.h"
#include "app/host_run.h"
#include "app/peak_fill.h"
#include "app/peak_labels.h"
#include "app/plot.h"
#include "app/sample_grid.h"
#include "app/selection.h"
#include "app/signal_units.h"

namespace app {
namespace {

bool Choose(RunData& run, const DisplayOptions& options, std::string& error) {
  std::vector<std::size_t> channels = ChooseChannels(run.channels);
  if (!options.channels.empty()) {
    if (!FindTraces(run.channels, options.channels, channels, error)) return false;
  } else if (channels.size() < run.channels.size()) {
    run.Note(std::to_string(channels.size()) + " of " + std::to_string(run.channels.size()) +
             " channels are drawn");
  }
  std::vector<std::size_t> auxiliary;
  const bool all = options.auxChannels == std::vector<std::string>{"all"};
  if (all || options.auxChannels.empty()) {
    auxiliary.resize(all ? run.auxiliary.size() : std::min<std::size_t>(run.auxiliary.size(), 1));
    for (std::size_t i = 0; i < auxiliary.size(); ++i) auxiliary[i] = i;
  } else if (!FindTraces(run.auxiliary, options.auxChannels, auxiliary, error)) {
    return false;
  }
  if (options.aux == AuxPlace::kOff) auxiliary.clear();
  run = Selected(std::move(run), channels, auxiliary);
  return true;
}

// At most what the view will show in a column.
double SecondsPerPixel(const RunData& run, const DisplayOptions& options) {
  double startS = std::numeric_limits<double>::infinity();
  double endS = -startS;
  for (const Trace& trace : run.channels) {
    startS = std::min(startS, trace.TimeAt(0));
    endS = std::max(endS, trace.TimeAt(trace.values.size() - 1));
  }
  const double spanS = options.toS.value_or(endS) - options.fromS.value_or(startS);
  return spanS / Scaled(options.widthPx, options);
}

void FillBackground(Plot& plot, const gfx::Surface& surface) {
  RECT all{0, 0, surface.Width(), surface.Height()};
  const HBRUSH brush = CreateSolidBrush(plot.view.colours.back());
  FillRect(plot.hdc, &all, brush);
  DeleteObject(brush);
}

void Paint(Plot& plot, const gfx::Surface& surface) {
  FillBackground(plot, surface);
  RECT rect{0, 0, plot.render.width, plot.render.height};
  SetViewportOrgEx(plot.hdc, plot.marginPx, plot.marginPx, nullptr);
  FillPeaks(plot);
  // The frame has an inside.
  if (plot.options.frame) SelectObject(plot.hdc, GetStockObject(NULL_BRUSH));
  plot.render.showchrom(plot.hdc, false, rect, plot.options.frame ? TChromRender::kPassFrame : 0);
  SetViewportOrgEx(plot.hdc, 0, 0, nullptr);
}

}  // namespace

double DefaultFontPx(int heightPx) { return std::max(12.0, 12.0 + (heightPx - 300) / 75.0); }

bool DrawPicture(RunData& run, const DisplayOptions& options, gfx::Surface& surface,
                 std::string& error) {
  if (!Choose(run, options, error)) return false;
  ShortenUnits(run);
  if (options.peaks != PeakSource::kNone) PlaceSamples(run, SecondsPerPixel(run, options));
  const embedded::RunRef host = HostRun(run, error);
  if (host == nullptr || !Calibrate(run, *host, error)) return false;
  surface = gfx::Surface(Scaled(options.widthPx, options), Scaled(options.heightPx, options));
  Plot plot(run, options, *host, surface);
  if (!SetTimes(plot, error) || !SetCurrent(plot, error)) return false;
  SetPeaks(run, *host, options.peaks, plot.view.timePerPixel);
  host->update_quant();
  SetLabels(plot);
  ChooseNames(plot);
  if (!options.allLabels) DropCrowdedLabels(plot);
  Paint(plot, surface);
  return true;
}

}  // namespace app
