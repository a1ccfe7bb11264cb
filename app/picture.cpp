#include "app/picture.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <numeric>
#include <optional>
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

// Parts of the heights of all peaks.
constexpr double kEnoughLabels = 0.9;
constexpr double kWorthChanging = 0.1;

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
  DrawArrows(plot);
  HidePlacedNames(plot);
  // The frame has an inside.
  if (plot.options.frame) SelectObject(plot.hdc, GetStockObject(NULL_BRUSH));
  plot.render.showchrom(plot.hdc, false, rect, plot.options.frame ? TChromRender::kPassFrame : 0);
  WritePlacedNames(plot);
  SetViewportOrgEx(plot.hdc, 0, 0, nullptr);
}

// The channels from the top, by their numbers in the run, and the current one among them; none: as
// the options and the channels suggest.
struct Arrangement {
  std::vector<std::size_t> order;
  std::optional<std::size_t> current;
};

// A run as it may be drawn, up to the choice of its labels.
struct Drawing {
  RunData run;
  embedded::RunRef host = nullptr;
  std::unique_ptr<Plot> plot;
  double labelledPart = 0;

  bool Make(const RunData& from, const Arrangement& arrangement, const DisplayOptions& options,
            gfx::Surface& surface, std::string& error);
};

bool Drawing::Make(const RunData& from, const Arrangement& arrangement,
                   const DisplayOptions& options, gfx::Surface& surface, std::string& error) {
  std::vector<std::size_t> auxiliary(from.auxiliary.size());
  std::iota(auxiliary.begin(), auxiliary.end(), std::size_t{0});
  run = Selected(from, arrangement.order, auxiliary);
  host = HostRun(run, error);
  if (host == nullptr || !Calibrate(run, *host, error)) return false;
  plot = std::make_unique<Plot>(run, options, *host, surface);
  if (!SetTimes(*plot, error) || !SetCurrent(*plot, error)) return false;
  if (arrangement.current) host->SetCurrentChannel(static_cast<int>(*arrangement.current));
  SetPeaks(run, *host, options.peaks, plot->view.timePerPixel);
  host->update_quant();
  SetLabels(*plot);
  ChooseNames(*plot);
  labelledPart = LabelledPart(*plot);
  return true;
}

// What else to try where labels of the first drawing have no room: its current channel on top, and
// other current channels, in their places and on top.
std::vector<Arrangement> Alternatives(const Drawing& first) {
  std::vector<std::size_t> currents = OtherCurrents(*first.plot);
  currents.insert(currents.begin(), first.plot->Current());
  std::vector<Arrangement> all;
  for (const std::size_t current : currents) {
    Arrangement each;
    each.order.resize(first.run.channels.size());
    std::iota(each.order.begin(), each.order.end(), std::size_t{0});
    if (current != first.plot->Current()) all.push_back({each.order, current});
    if (current == 0) continue;
    const auto place = each.order.begin() + static_cast<std::ptrdiff_t>(current);
    std::rotate(each.order.begin(), place, place + 1);
    all.push_back({each.order, 0});
  }
  return all;
}

}  // namespace

double DefaultFontPx(int heightPx) { return std::max(12.0, 12.0 + (heightPx - 300) / 75.0); }

bool DrawPicture(RunData& run, const DisplayOptions& options, gfx::Surface& surface,
                 std::string& error) {
  if (!Choose(run, options, error)) return false;
  ShortenUnits(run);
  if (options.peaks != PeakSource::kNone) PlaceSamples(run, SecondsPerPixel(run, options));
  surface = gfx::Surface(Scaled(options.widthPx, options), Scaled(options.heightPx, options));
  Arrangement asTheyAre;
  asTheyAre.order.resize(run.channels.size());
  std::iota(asTheyAre.order.begin(), asTheyAre.order.end(), std::size_t{0});
  auto best = std::make_unique<Drawing>();
  if (!best->Make(run, asTheyAre, options, surface, error)) return false;
  if (best->labelledPart < kEnoughLabels && !options.allLabels) {
    for (const Arrangement& arrangement : Alternatives(*best)) {
      auto other = std::make_unique<Drawing>();
      if (!other->Make(run, arrangement, options, surface, error)) return false;
      if (other->labelledPart >= best->labelledPart + kWorthChanging) best = std::move(other);
      if (best->labelledPart >= kEnoughLabels) break;
    }
  }
  if (!options.allLabels) DropCrowdedLabels(*best->plot);
  Paint(*best->plot, surface);
  run.notes = best->run.notes;
  return true;
}

}  // namespace app
