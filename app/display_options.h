// How a run is shown. The defaults make a picture for a report.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/run_data.h"

namespace app {

enum class PeakSource {
  kAuto,    // the file's, where it has any for the channel, else detected ones
  kFile,    // the file's
  kDetect,  // detected ones
  kNone,
};
enum class PeakLabels { kAuto, kNone, kNumber, kTime, kName, kNameAndAmount };
enum class Markers { kNone, kSelected, kAll };
enum class TraceStyle {
  kExact,    // first, largest, smallest and last sample of each column
  kAverage,  // their mean
  kPixel,    // the view's per-pixel path
};
enum class Names {
  kAuto,    // beside the traces, or as a list where they would be crossed there
  kBeside,  // below each trace's start
  kList,    // at the top left
};
enum class AuxPlace { kBehind, kFront, kOff };

struct SignalRange {
  double low;
  double high;
};

struct DisplayOptions {
  // Picture, in pixels of an unscaled one; `scale` multiplies these and the font.
  int widthPx = 1600;
  int heightPx = 900;
  double scale = 1;
  std::string font = "sans-serif";
  std::optional<double> fontPx;  // height of the capitals' line; default: by the picture's height

  // Visible part. Times are the file's own, in seconds. Default: all.
  std::optional<double> fromS;
  std::optional<double> toS;
  std::optional<SignalRange> signalRange;  // in the file's unit of the current channel

  // Channels by number (from 1) or by the beginning of their names. Empty: all, but of many only
  // some (see ChooseChannels).
  std::vector<std::string> channels;
  std::vector<std::string> auxChannels;  // empty: the first one; "all"
  std::string currentChannel;            // axis and labels; empty: the one of the widest range
  AuxPlace aux = AuxPlace::kBehind;
  // Distance of neighbouring channels, fraction of the plot's height; default: the stack takes a
  // third of the plot, and each channel at least the room for its name.
  std::optional<double> channelStep;

  PeakSource peaks = PeakSource::kAuto;
  PeakLabels labels = PeakLabels::kAuto;
  bool allLabels = false;  // labels that collide with others or with a trace are drawn too
  bool baselines = true;
  bool peakTicks = false;
  // Filled peaks, from 1; 0 … 0: none.
  int fillFirst = 1;
  int fillLast = 65'535;
  Markers markers = Markers::kNone;
  int selectedPeak = 0;

  bool grid = false;
  bool signalAxis = true;
  bool relativeAxis = false;  // values relative to the plot's bottom instead of the signal's own
  Names names = Names::kAuto;
  bool frame = false;
  bool subtractDrift = false;
  TraceStyle traces = TraceStyle::kExact;
  std::string colours = "safe";
  TimeUnit axisUnit = TimeUnit::kMinute;  // kSecond, kMinute or kHour
};

// Smallest and largest extent of a picture in pixels, scale included.
inline constexpr int kMinExtentPx = 64;
inline constexpr int kMaxExtentPx = 16'384;

}  // namespace app
