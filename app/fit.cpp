#include "app/fit.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "app/peak_labels.h"
#include "app/selection.h"

namespace app {
namespace {

// Between a trace and the one below it, and the time axis: the name of the upper one.
constexpr double kNameLines = 1.4;
constexpr double kMaxLift = 0.25;  // of the plot
// Of several channels: what their zero lines take of the plot, and of two neighbours.
constexpr double kStackPart = 0.3;
constexpr double kMaxStep = 0.15;
constexpr double kMaxStackPart = 0.6;

// Largest less smallest value, in signal units.
double WidthOfRange(const TChannel& channel) {
  return (static_cast<double>(channel.rangeHigh) - channel.rangeLow) *
         static_cast<double>(channel.unitsPerCount);
}

// Of the first channel's unit and at least half the widest range.
std::vector<std::size_t> WideChannels(const Plot& plot) {
  std::vector<std::size_t> wide;
  double widest = 0;
  for (std::size_t i = 0; i < plot.run.channels.size(); ++i) {
    if (!plot.SameUnit(i, 0)) continue;
    widest = std::max(widest, WidthOfRange(plot.Channel(i)));
    wide.push_back(i);
  }
  std::erase_if(wide, [&](std::size_t i) { return WidthOfRange(plot.Channel(i)) < widest / 2; });
  return wide;
}

bool CanShowPeaks(const Plot& plot, std::size_t channel) {
  return plot.host.PeakPlacementErrorSec(static_cast<int>(channel)) <= plot.view.timePerPixel;
}

// From the channel's zero to its highest visible sample, in signal units.
double RangeInView(const Plot& plot, std::size_t index) {
  const TChannel& channel = plot.Channel(index);
  double highest = channel.zero;
  for (std::size_t i = 0; i < plot.run.channels[index].values.size(); ++i) {
    if (plot.IsInView(index, i)) highest = std::max<double>(highest, channel.samples[i]);
  }
  return (highest - channel.zero) * static_cast<double>(channel.unitsPerCount);
}

// The lowest visible sample of the current channel. The view's own fit may leave out the last one.
void SetZero(Plot& plot) {
  TChannel& current = plot.Channel(plot.Current());
  for (std::size_t i = 0; i < plot.run.channels[plot.Current()].values.size(); ++i) {
    if (!plot.IsInView(plot.Current(), i)) continue;
    current.zero = std::min(+current.zero, +current.samples[i]);
  }
}

// A range that the zero belongs to: the noise of a steady pressure must not fill the picture.
void FitAuxiliary(Plot& plot) {
  // The plus signs make values of packed fields, which no reference may be bound to.
  plot.render.auxPosition = 1;
  plot.render.ysetfull(plot.hdc);
  plot.view.auxMin = std::min(+plot.view.auxMin, 0.0);
  plot.view.auxMax = std::max(+plot.view.auxMax, 0.0);
  plot.view.auxMax += plot.auxHeadroom * (plot.view.auxMax - plot.view.auxMin);
}

// Stacks the channels, with the lowest one lifted by the height of its name.
void Stack(Plot& plot) {
  THoldWindow& view = plot.view;
  const double line =
      static_cast<double>(plot.render.charHeight) / std::max<LONG>(+view.plotHeight, 1);
  const double gaps = static_cast<double>(plot.run.channels.size()) - 1;
  if (plot.options.channelStep) {
    view.channelStep = *plot.options.channelStep;
  } else if (gaps > 0) {
    const double wanted = std::max(std::min(kStackPart / gaps, kMaxStep), kNameLines * line);
    view.channelStep = std::min(wanted, kMaxStackPart / gaps);
  }
  view.zeroFraction = std::min(kNameLines * line, kMaxLift);
  plot.render.scalewindow();
}

void SetRange(Plot& plot, const SignalRange& range) {
  TChannel& current = plot.Channel(plot.Current());
  constexpr double kLimit = 2e9;
  const double factor = plot.run.channels[plot.Current()].perFileUnit;
  const double low = range.low * factor / static_cast<double>(current.unitsPerCount);
  current.zero = static_cast<LONG>(std::lround(std::clamp(low, -kLimit, kLimit)));
  plot.view.fullScale = (range.high - range.low) * factor;
  plot.view.zeroFraction = 0;
  plot.render.scalewindow();
}

// Of the plot's height, so that every channel fits.
double ScaleOfTraces(Plot& plot) {
  const std::size_t current = plot.Current();
  double scale = 0;
  for (std::size_t c = 0; c < plot.run.channels.size(); ++c) {
    const double room = std::max(
        plot.render.getoffset(static_cast<int>(c)) - plot.render.margin() - plot.signalHeadroomPx,
        1);
    // A channel of another unit is drawn over the current channel's range.
    const double range =
        plot.SameUnit(c, current) ? RangeInView(plot, c) : WidthOfRange(plot.Channel(current));
    scale = std::max(scale, range * plot.view.plotHeight / room);
  }
  return scale;
}

// So that the labels fit above their peaks.
double ScaleOfLabels(Plot& plot) {
  const std::size_t index = plot.Current();
  const TChannel& current = plot.Channel(index);
  double scale = 0;
  for (int k = 1; plot.LabelMode() != 0 && k <= plot.host.peaks.count; ++k) {
    const RECT box = BoxOf(plot, k).box;
    const double room = plot.render.getoffset(static_cast<int>(index)) - plot.render.margin() -
                        (box.bottom - box.top);
    const LONG apex = plot.host.peaks.At(k - 1)->apex;
    if (room <= 0 || !plot.IsInView(index, static_cast<std::size_t>(apex))) continue;
    const double height = (static_cast<double>(current.samples[apex]) - current.zero) *
                          static_cast<double>(current.unitsPerCount);
    scale = std::max(scale, height * plot.view.plotHeight / room);
  }
  return scale;
}

void FitSignal(Plot& plot) {
  if (plot.options.signalRange) {
    SetRange(plot, *plot.options.signalRange);
    return;
  }
  Stack(plot);
  const double scale = std::max(ScaleOfTraces(plot), ScaleOfLabels(plot));
  if (scale > 0) plot.view.fullScale = scale;
  plot.render.scalewindow();
}

}  // namespace

bool SetTimes(Plot& plot, std::string& error) {
  THoldWindow& view = plot.view;
  const double offsetS = plot.OffsetS();
  view.t0 = plot.options.fromS ? *plot.options.fromS - offsetS : 0.0;
  view.t1 = plot.options.toS ? *plot.options.toS - offsetS : plot.host.ActualDuration();
  const std::vector<Trace>& traces = plot.run.channels;
  const bool hasSamples = std::any_of(traces.begin(), traces.end(), [&](const Trace& trace) {
    return trace.TimeAt(0) - offsetS < view.t1 &&
           trace.TimeAt(trace.values.size() - 1) - offsetS > view.t0;
  });
  if (!(view.t0 < view.t1) || !hasSamples) {
    error = "nothing lies between --from and --to";
    return false;
  }
  plot.render.scalewindow();
  if (plot.options.toS) return true;
  // The plot's clip ends in front of the column of t1, which the last sample must not be in.
  view.t1 += view.timePerPixel;
  plot.render.scalewindow();
  return true;
}

bool SetCurrent(Plot& plot, std::string& error) {
  const std::vector<Trace>& traces = plot.run.channels;
  if (!plot.options.currentChannel.empty()) {
    std::vector<std::size_t> found;
    if (!FindTraces(traces, {plot.options.currentChannel}, found, error)) return false;
    plot.host.SetCurrentChannel(static_cast<int>(found.front()));
    return true;
  }
  const std::vector<std::size_t> wide = WideChannels(plot);
  const auto placed =
      std::find_if(wide.begin(), wide.end(), [&](std::size_t i) { return CanShowPeaks(plot, i); });
  plot.host.SetCurrentChannel(static_cast<int>(placed != wide.end() ? *placed : wide.front()));
  return true;
}

std::vector<std::size_t> OtherCurrents(const Plot& plot) {
  if (!plot.options.currentChannel.empty()) return {};
  std::vector<std::size_t> others = WideChannels(plot);
  std::erase_if(others,
                [&](std::size_t i) { return i == plot.Current() || !CanShowPeaks(plot, i); });
  return others;
}

void Fit(Plot& plot) {
  FitAuxiliary(plot);
  plot.render.auxPosition = 0;
  plot.render.ysetfull(plot.hdc);  // the current channel's zero
  SetZero(plot);
  FitSignal(plot);
  plot.render.auxPosition = plot.options.aux == AuxPlace::kFront ? 1
                            : plot.options.aux == AuxPlace::kOff ? 2
                                                                 : 0;
}

}  // namespace app
