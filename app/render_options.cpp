#include "app/render_options.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "app/formats/header_words.h"
#include "app/formats/text.h"
#include "embedded/colours.h"

namespace app {
namespace {

// A word of an option and its value.
template <typename Value, std::size_t kCount>
bool Pick(const std::array<std::pair<const char*, Value>, kCount>& words, const std::string& word,
          Value& value, const char* option, std::string& error) {
  std::string all;
  for (const auto& [name, meaning] : words) {
    all += (all.empty() ? "" : ", ") + std::string(name);
    if (word != name) continue;
    value = meaning;
    return true;
  }
  error = std::string(option) + ": '" + word + "' is not one of " + all;
  return false;
}

constexpr std::array kPeakSources = {
    std::pair{"auto", PeakSource::kAuto}, std::pair{"file", PeakSource::kFile},
    std::pair{"detect", PeakSource::kDetect}, std::pair{"none", PeakSource::kNone}};
constexpr std::array kPeakLabels = {
    std::pair{"auto", PeakLabels::kAuto},     std::pair{"none", PeakLabels::kNone},
    std::pair{"number", PeakLabels::kNumber}, std::pair{"time", PeakLabels::kTime},
    std::pair{"name", PeakLabels::kName},     std::pair{"amount", PeakLabels::kNameAndAmount}};
constexpr std::array kMarkers = {std::pair{"none", Markers::kNone},
                                 std::pair{"selected", Markers::kSelected},
                                 std::pair{"all", Markers::kAll}};
constexpr std::array kTraceStyles = {std::pair{"exact", TraceStyle::kExact},
                                     std::pair{"average", TraceStyle::kAverage},
                                     std::pair{"pixel", TraceStyle::kPixel}};
constexpr std::array kAuxPlaces = {std::pair{"behind", AuxPlace::kBehind},
                                   std::pair{"front", AuxPlace::kFront},
                                   std::pair{"off", AuxPlace::kOff}};
constexpr std::array kNames = {std::pair{"auto", Names::kAuto}, std::pair{"beside", Names::kBeside},
                               std::pair{"list", Names::kList}};
constexpr std::array kAxisUnits = {std::pair{"s", TimeUnit::kSecond},
                                   std::pair{"min", TimeUnit::kMinute},
                                   std::pair{"h", TimeUnit::kHour}};
constexpr std::array kTimeUnits = {
    std::pair{"ms", TimeUnit::kMillisecond}, std::pair{"s", TimeUnit::kSecond},
    std::pair{"min", TimeUnit::kMinute}, std::pair{"h", TimeUnit::kHour}};

std::optional<int> WholeNumber(std::string_view text) {
  int number = 0;
  const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || status != std::errc() || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

bool ParseScaledSize(const RenderTexts& texts, DisplayOptions& display, std::string& error) {
  if (!ParseSize(texts.output.size, display.widthPx, display.heightPx, error)) return false;
  const auto isGood = [&display](int px) {
    return px * display.scale >= kMinExtentPx && px * display.scale <= kMaxExtentPx;
  };
  if (isGood(display.widthPx) && isGood(display.heightPx)) return true;
  error = "--scale: makes the picture smaller than " + std::to_string(kMinExtentPx) +
          " or larger than " + std::to_string(kMaxExtentPx) + " pixels";
  return false;
}

bool ParseTimes(const RenderTexts& texts, DisplayOptions& display, std::string& error) {
  for (const auto& [option, text, time] : {std::tuple{"--from", &texts.from, &display.fromS},
                                           std::tuple{"--to", &texts.to, &display.toS}}) {
    if (text->empty() || *text == "full") continue;
    *time = ParseTimeS(*text, display.axisUnit);
    if (!*time) {
      error = std::string(option) + ": '" + *text + "' is not a time such as 2.5min or 90s";
      return false;
    }
  }
  return true;
}

// "LOW:HIGH" or "full".
bool ParseSignal(const RenderTexts& texts, DisplayOptions& display, std::string& error) {
  if (texts.signal.empty() || texts.signal == "full") return true;
  const std::size_t colon = texts.signal.find(':');
  const auto low = ParseNumber(Trim(std::string_view(texts.signal).substr(0, colon)), '.');
  const auto high = colon == std::string::npos
                        ? std::nullopt
                        : ParseNumber(Trim(std::string_view(texts.signal).substr(colon + 1)), '.');
  if (low && high && *low < *high) {
    display.signalRange = SignalRange{*low, *high};
    return true;
  }
  error = "--signal-range: '" + texts.signal + "' is not LOW:HIGH";
  return false;
}

// "all", "none", "3" or "2-5".
bool ParseFill(const RenderTexts& texts, DisplayOptions& display, std::string& error) {
  if (texts.fill == "all") return true;
  display.fillFirst = display.fillLast = 0;
  if (texts.fill == "none") return true;
  const std::size_t dash = texts.fill.find('-');
  const auto first = WholeNumber(std::string_view(texts.fill).substr(0, dash));
  const auto last = dash == std::string::npos
                        ? first
                        : WholeNumber(std::string_view(texts.fill).substr(dash + 1));
  if (first && last && 1 <= *first && *first <= *last) {
    display.fillFirst = *first;
    display.fillLast = *last;
    return true;
  }
  error = "--fill: '" + texts.fill + "' is not all, none, a peak's number or a range such as 2-5";
  return false;
}

bool ParseNumbers(const RenderTexts& texts, DisplayOptions& display, std::string& error) {
  if (texts.fontPx != 0) display.fontPx = texts.fontPx;
  if (display.fontPx && !(*display.fontPx >= 4 && *display.fontPx <= 400)) {
    error = "--font-size: is not from 4 to 400";
  } else if (!(display.scale >= 0.1 && display.scale <= 20)) {
    error = "--scale: is not from 0.1 to 20";
  } else if (texts.step >= 0 && !(texts.step <= 100)) {
    error = "--channel-step: is not from 0 to 100";
  } else if (!embedded::ColourSchemeNamed(display.colours)) {
    error =
        "--colours: '" + display.colours + "' is not one of classic, classic-dark, safe, safe-dark";
  }
  if (texts.step >= 0) display.channelStep = texts.step / 100;
  return error.empty();
}

void AddInput(CLI::App& command, RenderTexts& texts) {
  command
      .add_option(
          "--time-unit", texts.timeUnit,
          "Unit of the files' times instead of the one they state or suggest: ms, s, min, h")
      ->type_name("UNIT");
  AddAxisOptions(command, texts.axes);
  command
      .add_option("--peak-table", texts.peakTable,
                  "Table of peaks (time, start, end, name, amount) in place of the files' own; "
                  "default: STEM.peaks.csv beside a file, where there is one")
      ->type_name("FILE");
}

void AddPicture(CLI::App& command, RenderTexts& texts) {
  DisplayOptions& display = texts.display;
  AddOutputOptions(command, texts.output);
  command.add_option("--scale", display.scale, "Enlarges size, text and lines")
      ->type_name("FACTOR");
  command.add_option("--font", display.font, "Font family")->capture_default_str();
  command
      .add_option("--font-size", texts.fontPx, "Text height in pixels (default: by the picture's)")
      ->type_name("PX");
  command
      .add_option("--colours,--colors", display.colours,
                  "Colour scheme: classic, classic-dark, safe (told apart with any colour "
                  "vision), safe-dark")
      ->capture_default_str();
}

void AddView(CLI::App& command, RenderTexts& texts) {
  DisplayOptions& display = texts.display;
  command.add_option("--from", texts.from, "Left edge: a time such as 2.5min or 90s, or full")
      ->type_name("TIME");
  command.add_option("--to", texts.to, "Right edge: likewise")->type_name("TIME");
  command
      .add_option("--signal-range", texts.signal,
                  "Signal at the plot's bottom and top in the file's unit, or full (fits the data)")
      ->type_name("LOW:HIGH");
  command
      .add_option("--axis-unit", texts.axisUnit, "Unit of the time axis and of labels: s, min, h")
      ->capture_default_str();
  command
      .add_option("--channels", display.channels,
                  "Channels to draw: numbers, ranges or beginnings of names")
      ->delimiter(',')
      ->type_name("LIST");
  command
      .add_option("--current", display.currentChannel,
                  "Channel that the axis and the labels belong to (default: of the widest range)")
      ->type_name("CHANNEL");
  command
      .add_option("--channel-step", texts.step,
                  "Distance of neighbouring channels in percent of the plot's height")
      ->type_name("PERCENT");
  command
      .add_option("--traces", texts.traces,
                  "What is drawn of each pixel column: exact, average, or pixel (per-pixel path)")
      ->capture_default_str();
  command.add_flag("--average", texts.average, "The same as --traces average");
  command.add_flag("--drift", display.subtractDrift,
                   "Subtract the straight line through each trace's ends");
}

void AddDecoration(CLI::App& command, RenderTexts& texts) {
  DisplayOptions& display = texts.display;
  command
      .add_option("--aux", texts.aux,
                  "Auxiliary traces: behind or in front of the channels, or off")
      ->capture_default_str();
  command
      .add_option("--aux-channels", display.auxChannels,
                  "Auxiliary channels to draw (default: the first), or all; one scale for all")
      ->delimiter(',')
      ->type_name("LIST");
  command
      .add_option("--peaks", texts.peaks,
                  "Peaks: auto (the file's or detected), file, detect, none")
      ->capture_default_str();
  command
      .add_option("--peak-labels", texts.labels,
                  "Labels of the current channel's peaks: auto (names, with amounts where "
                  "a calibration gives any, or times), none, number, time, name, amount (name and "
                  "amount)")
      ->capture_default_str();
  command.add_flag("--all-labels", display.allLabels,
                   "Draw labels too that collide with others or with a trace");
  command
      .add_option("--fill", texts.fill,
                  "Peaks to fill: all, none, a number, or a range such as 2-5")
      ->capture_default_str();
  command
      .add_option(
          "--markers", texts.markers,
          "Arrows at starts, apexes and ends: none, selected, all; with arrows, the current "
          "channel is drawn alone")
      ->capture_default_str();
  command.add_option("--select", display.selectedPeak, "Number of the selected peak")
      ->type_name("PEAK");
  command.add_flag("--baselines,!--no-baselines", display.baselines, "Baselines (on)");
  command.add_flag("--peak-ticks", display.peakTicks, "Ticks at the ends of baselines");
  command.add_flag("--grid", display.grid, "Dotted lines from the ticks");
  command.add_flag("--signal-axis,!--no-signal-axis", display.signalAxis,
                   "Signal axis; without it a legend of the full scale (on)");
  command.add_flag("--relative-axis", display.relativeAxis,
                   "Signal axis that counts from the plot's bottom");
  command
      .add_option(
          "--names", texts.names,
          "Channel names: beside the traces, as a list, or auto (beside them if there is room)")
      ->capture_default_str();
  command.add_flag("--frame", display.frame, "Frame around the picture");
}

}  // namespace

void AddRenderOptions(CLI::App& command, RenderTexts& texts) {
  AddInput(command, texts);
  AddAmountOptions(command, texts.amounts);
  AddPicture(command, texts);
  AddView(command, texts);
  AddDecoration(command, texts);
}

std::optional<double> ParseTimeS(const std::string& text, TimeUnit unit) {
  const std::size_t end = text.find_last_of("0123456789.");
  if (end == std::string::npos) return std::nullopt;
  const std::string_view word = Trim(std::string_view(text).substr(end + 1));
  if (!word.empty()) unit = TimeUnitOf(word);
  const auto number = ParseNumber(Trim(std::string_view(text).substr(0, end + 1)), '.');
  if (!number || unit == TimeUnit::kUnknown) return std::nullopt;
  const double timeS = *number * SecondsIn(unit);
  return std::abs(timeS) <= kMaxTimeS ? std::optional(timeS) : std::nullopt;
}

bool UnderstandRenderOptions(const RenderTexts& texts, DisplayOptions& display, ReadOptions& read,
                             std::string& error) {
  display = texts.display;
  if (!Pick(kPeakSources, texts.peaks, display.peaks, "--peaks", error) ||
      !Pick(kPeakLabels, texts.labels, display.labels, "--peak-labels", error) ||
      !Pick(kMarkers, texts.markers, display.markers, "--markers", error) ||
      !Pick(kTraceStyles, texts.traces, display.traces, "--traces", error) ||
      !Pick(kAuxPlaces, texts.aux, display.aux, "--aux", error) ||
      !Pick(kNames, texts.names, display.names, "--names", error) ||
      !Pick(kAxisUnits, texts.axisUnit, display.axisUnit, "--axis-unit", error)) {
    return false;
  }
  if (!texts.timeUnit.empty() &&
      !Pick(kTimeUnits, texts.timeUnit, read.timeUnit, "--time-unit", error)) {
    return false;
  }
  if (!UnderstandAxisOptions(texts.axes, read, error)) return false;
  if (texts.average) display.traces = TraceStyle::kAverage;
  return ParseNumbers(texts, display, error) && ParseScaledSize(texts, display, error) &&
         ParseTimes(texts, display, error) && ParseSignal(texts, display, error) &&
         ParseFill(texts, display, error);
}

}  // namespace app
