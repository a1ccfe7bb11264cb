#include "app/picture.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "app/formats/text.h"
#include "app/host_run.h"
#include "app/label_room.h"
#include "app/selection.h"
#include "elugraph/chromview/chrom_render.h"
#include "elugraph/trace/yval.h"
#include "embedded/colours.h"
#include "platform/gfx/context.h"
#include "platform/gfx/gdi.h"
#include "platform/gfx/text_engine.h"

namespace app {
namespace {

// Line widths, percent of the text line.
constexpr BYTE kTracePercent = 8;
constexpr BYTE kAxisPercent = 6;
constexpr double kLabelFontPart = 0.8;  // of the main font
// Between a trace and the one below it, and the time axis: the name of the upper one.
constexpr double kNameLines = 1.4;
constexpr double kMaxLift = 0.25;  // of the plot
// Of several channels: what their zero lines take of the plot, and of two neighbours.
constexpr double kStackPart = 0.3;
constexpr double kMaxStep = 0.15;
constexpr double kMaxStackPart = 0.6;
// Above the auxiliary traces, part of their range: enough, and enough for a list of names.
constexpr double kAuxHeadroom = 0.05;
constexpr double kAuxHighHeadroom = 0.4;
constexpr double kFlatPx = 4;  // peaks lower than this are hardly more than a line

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

// As the view joins them.
std::string NameText(const TChannel& channel) {
  const std::string_view name = channel.name;
  const std::string_view description = channel.description;
  constexpr std::size_t kCompared = 8;
  if (description.empty() || description.substr(0, kCompared) == name) return std::string(name);
  return std::string(name) + "(" + std::string(description) + ")";
}

class OwnedFont {
 public:
  OwnedFont(const std::string& family, double heightPx, int escapement) {
    LOGFONTA font;
    std::memset(&font, 0, sizeof font);
    font.lfHeight = -static_cast<LONG>(std::lround(std::max(heightPx, 4.0)));
    font.lfEscapement = escapement;
    font.lfOrientation = escapement;
    font.lfWeight = FW_NORMAL;
    family.copy(font.lfFaceName, sizeof font.lfFaceName - 1);
    handle_ = CreateFontIndirectA(&font);
  }
  OwnedFont(const OwnedFont&) = delete;
  OwnedFont& operator=(const OwnedFont&) = delete;
  ~OwnedFont() { DeleteObject(handle_); }
  HFONT Handle() const { return handle_; }

 private:
  HFONT handle_;
};

class OwnedContext {
 public:
  explicit OwnedContext(gfx::Surface& surface)
      : hdc_(gfx::CreateRasterContext(surface, gfx::SystemText())) {}
  OwnedContext(const OwnedContext&) = delete;
  OwnedContext& operator=(const OwnedContext&) = delete;
  ~OwnedContext() { DeleteDC(hdc_); }
  HDC Handle() const { return hdc_; }

 private:
  HDC hdc_;
};

int Scaled(double px, const DisplayOptions& options) {
  return static_cast<int>(std::lround(px * options.scale));
}

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

class Picture {
 public:
  Picture(RunData& run, const DisplayOptions& options, embedded::Run& host, gfx::Surface& surface)
      : run_(run),
        options_(options),
        host_(host),
        view_(host.View()),
        fontPx_(options.fontPx.value_or(DefaultFontPx(options.heightPx)) * options.scale),
        marginPx_(static_cast<int>(fontPx_ / 2)),
        context_(surface),
        hdc_(context_.Handle()),
        font_(options.font, fontPx_, 0),
        labelFont_(options.font, fontPx_ * kLabelFontPart, 900),
        render_(&host) {}

  bool Draw(std::string& error) {
    SetOptions();
    if (!SetTimes(error) || !SetCurrent(error)) return false;
    SetPeaks(run_, host_, options_.peaks, view_.timePerPixel);
    SetLabels();
    ChooseNames();
    Fit();
    if (!options_.allLabels) DropCrowdedLabels();
    RECT rect{0, 0, render_.width, render_.height};
    FillMargins();
    SetViewportOrgEx(hdc_, marginPx_, marginPx_, nullptr);
    render_.showchrom(hdc_, true, rect, options_.frame ? TChromRender::kPassFrame : 0);
    SetViewportOrgEx(hdc_, 0, 0, nullptr);
    return true;
  }

 private:
  void SetOptions();
  bool SetTimes(std::string& error);
  bool SetCurrent(std::string& error);
  void SetLabels();
  void Fit();
  void FitAuxiliary();
  void Stack();
  void FitSignal();
  bool IsInView(std::size_t channel, std::size_t sample) const;
  void DropCrowdedLabels();
  void ChooseNames();
  int LabelMode() const { return view_.flags & THoldWindow::kLabelMode; }
  bool HasFill() const { return options_.fillLast > 0 && options_.peaks != PeakSource::kNone; }
  bool IsVertical(const PeakRecord& peak) const {
    return LabelMode() == 2 || (LabelMode() > 2 && peak.component != 0);
  }
  void FillMargins();
  TChannel& Channel(std::size_t index) const {
    return *host_.channels.At(static_cast<LONG>(index));
  }
  double UnitsPerCount() const {
    return static_cast<double>(Channel(static_cast<std::size_t>(host_.curchan())).unitsPerCount);
  }
  double WidthOfRange(std::size_t index) const;
  double RangeInView(std::size_t index) const;
  bool SameUnit(std::size_t a, std::size_t b) const {
    return Lower(run_.channels[a].unit) == Lower(run_.channels[b].unit);
  }
  bool PlacesPeaks(std::size_t index) const {
    return host_.PeakPlacementErrorSec(static_cast<int>(index)) <= view_.timePerPixel;
  }
  double UnitsPerPixel(const TChannel& channel) const;
  TraceBands BandsOf(const Trace& trace, const YVAL& yval) const;
  std::vector<TraceBands> Bands();
  YVAL AuxValues(const TChannel& channel);
  std::vector<RECT> NameBoxes(bool list);
  bool NamesHaveRoom(bool list, const std::vector<TraceBands>& bands);
  LabelBox BoxOf(int number);
  std::string LabelText(int number) const;

  RunData& run_;
  const DisplayOptions& options_;
  embedded::Run& host_;
  THoldWindow& view_;
  double fontPx_;
  int marginPx_;
  double auxHeadroom_ = kAuxHeadroom;
  OwnedContext context_;
  HDC hdc_;
  OwnedFont font_;
  OwnedFont labelFont_;
  TChromRender render_;
};

void Picture::SetOptions() {
  const auto set = [this](bool on, WORD bit) {
    if (on) view_.flags = static_cast<WORD>(view_.flags | bit);
  };
  set(options_.baselines, THoldWindow::kBaselines);
  set(options_.peakTicks, THoldWindow::kPeakTicks);
  set(options_.grid, THoldWindow::kGrid);
  set(options_.signalAxis, THoldWindow::kSignalStrip);
  // With a reference level of 0 the "relative" axis shows the signal's own values.
  set(!options_.relativeAxis, THoldWindow::kRelativeAxis);
  set(options_.subtractDrift, THoldWindow::kSubtractDrift);
  set(options_.traces == TraceStyle::kExact, THoldWindow::kExact);
  set(options_.traces == TraceStyle::kPixel, THoldWindow::kPerPixel);
  set(true, THoldWindow::kLabelAll);
  const auto scheme = embedded::ColourSchemeNamed(options_.colours);
  if (scheme) view_.colours = *scheme;
  view_.auxColours = embedded::Muted(view_.colours, static_cast<int>(run_.channels.size() % 8));
  view_.thickness = view_.auxThickness = embedded::Thicknesses(kTracePercent, kAxisPercent);
  host_.SetTimeUnit(options_.axisUnit == TimeUnit::kSecond ? embedded::TimeUnit::kSeconds
                    : options_.axisUnit == TimeUnit::kHour ? embedded::TimeUnit::kHours
                                                           : embedded::TimeUnit::kMinutes);
  render_.SetSize(Scaled(options_.widthPx, options_) - 2 * marginPx_,
                  Scaled(options_.heightPx, options_) - 2 * marginPx_);
  render_.SetFonts(font_.Handle(), labelFont_.Handle());
  render_.setFontSize(hdc_);
  render_.markMode = static_cast<LONG>(options_.markers);
  // Peaks from fillFirst on; with a single selected peak its area alone is filled and has no
  // baseline. Peak 0 selects none, and lets a range from 1 keep its first baseline.
  render_.selectedPeak = options_.selectedPeak > 0 ? options_.selectedPeak
                         : options_.fillFirst == 1 ? 0
                                                   : options_.fillFirst;
  render_.selectedPeakEnd = options_.fillLast;
}

bool Picture::SetTimes(std::string& error) {
  const double offsetS = host_.timeOffsetMs / 1000.0;
  view_.t0 = options_.fromS ? *options_.fromS - offsetS : 0.0;
  view_.t1 = options_.toS ? *options_.toS - offsetS : host_.ActualDuration();
  const bool hasSamples =
      std::any_of(run_.channels.begin(), run_.channels.end(), [&](const Trace& trace) {
        return trace.TimeAt(0) - offsetS < view_.t1 &&
               trace.TimeAt(trace.values.size() - 1) - offsetS > view_.t0;
      });
  if (!(view_.t0 < view_.t1) || !hasSamples) {
    error = "nothing lies between --from and --to";
    return false;
  }
  render_.scalewindow();
  return true;
}

// Largest less smallest value, in signal units.
double Picture::WidthOfRange(std::size_t index) const {
  const TChannel& channel = Channel(index);
  return (static_cast<double>(channel.rangeHigh) - channel.rangeLow) *
         static_cast<double>(channel.unitsPerCount);
}

// Axis and labels belong to the current channel. Without a wish that is the first one, of the unit
// of the first channel, that has at least half the widest range; if possible, one that can show its
// peaks.
bool Picture::SetCurrent(std::string& error) {
  std::size_t current = 0;
  if (!options_.currentChannel.empty()) {
    std::vector<std::size_t> found;
    if (!FindTraces(run_.channels, {options_.currentChannel}, found, error)) return false;
    current = found.front();
  } else {
    double widest = 0;
    for (std::size_t i = 0; i < run_.channels.size(); ++i) {
      if (SameUnit(i, 0)) widest = std::max(widest, WidthOfRange(i));
    }
    const auto find = [&](bool placed) {
      std::size_t i = 0;
      while (i < run_.channels.size() &&
             !(SameUnit(i, 0) && WidthOfRange(i) >= widest / 2 && (!placed || PlacesPeaks(i)))) {
        ++i;
      }
      return i;
    };
    current = find(true);
    if (current == run_.channels.size()) current = find(false);
  }
  host_.SetCurrentChannel(static_cast<int>(current));
  return true;
}

void Picture::SetLabels() {
  int mode = static_cast<int>(options_.labels) - static_cast<int>(PeakLabels::kNone);
  if (options_.labels == PeakLabels::kAuto) {
    bool names = false;
    for (LONG i = 0; i < host_.peaks.count; ++i) {
      const component* of = host_.calibration.components.At(host_.peaks.At(i)->component - 1);
      names = names || (of != nullptr && of->name[0] != '\0');
    }
    mode = names ? 3 : 2;
  }
  view_.flags = static_cast<WORD>(view_.flags | mode);
}

void Picture::Fit() {
  FitAuxiliary();
  render_.auxPosition = 0;
  render_.ysetfull(hdc_);  // the current channel's zero
  FitSignal();
  render_.auxPosition = options_.aux == AuxPlace::kFront ? 1
                        : options_.aux == AuxPlace::kOff ? 2
                                                         : 0;
}

// A range that the zero belongs to: the noise of a steady pressure must not fill the picture.
void Picture::FitAuxiliary() {
  // The plus signs make values of packed fields, which no reference may be bound to.
  render_.auxPosition = 1;
  render_.ysetfull(hdc_);
  view_.auxMin = std::min(+view_.auxMin, 0.0);
  view_.auxMax = std::max(+view_.auxMax, 0.0);
  view_.auxMax += auxHeadroom_ * (view_.auxMax - view_.auxMin);
}

// Stacks the channels, with the lowest one lifted by the height of its name.
void Picture::Stack() {
  const double line =
      static_cast<double>(render_.charHeight) / std::max<LONG>(+view_.plotHeight, 1);
  const double gaps = static_cast<double>(run_.channels.size()) - 1;
  if (options_.channelStep) {
    view_.channelStep = *options_.channelStep;
  } else if (gaps > 0) {
    const double wanted = std::max(std::min(kStackPart / gaps, kMaxStep), kNameLines * line);
    view_.channelStep = std::min(wanted, kMaxStackPart / gaps);
  }
  view_.zeroFraction = std::min(kNameLines * line, kMaxLift);
  render_.scalewindow();
}

// Scales such that every channel fits on its zero line, and the labels above their peaks.
void Picture::FitSignal() {
  const std::size_t cur = static_cast<std::size_t>(host_.curchan());
  TChannel& current = Channel(cur);
  const double units = static_cast<double>(current.unitsPerCount);
  if (options_.signalRange) {
    constexpr double kLimit = 2e9;
    current.zero = static_cast<LONG>(
        std::lround(std::clamp(options_.signalRange->low / units, -kLimit, kLimit)));
    view_.fullScale = options_.signalRange->high - options_.signalRange->low;
    view_.zeroFraction = 0;
    render_.scalewindow();
    return;
  }
  Stack();
  const double plot = view_.plotHeight;
  double scale = 0;
  for (std::size_t c = 0; c < run_.channels.size(); ++c) {
    const double room = std::max(render_.getoffset(static_cast<int>(c)) - render_.margin(), 1);
    // A channel of another unit is drawn over the current channel's range.
    const double range = SameUnit(c, cur) ? RangeInView(c) : WidthOfRange(cur);
    scale = std::max(scale, range * plot / room);
  }
  for (int k = 1; LabelMode() != 0 && k <= host_.peaks.count; ++k) {
    const RECT box = BoxOf(k).box;
    const double labelRoom =
        render_.getoffset(static_cast<int>(cur)) - render_.margin() - (box.bottom - box.top);
    const LONG apex = host_.peaks.At(k - 1)->apex;
    if (labelRoom > 0 && IsInView(cur, static_cast<std::size_t>(apex))) {
      scale = std::max(scale, (static_cast<double>(current.samples[apex]) - current.zero) * units *
                                  plot / labelRoom);
    }
  }
  if (scale > 0) view_.fullScale = scale;
  render_.scalewindow();
}

bool Picture::IsInView(std::size_t channel, std::size_t sample) const {
  const double time = run_.channels[channel].TimeAt(sample) - host_.timeOffsetMs / 1000.0;
  return time >= view_.t0 && time <= view_.t1;
}

// From the channel's zero to its highest visible sample, in signal units.
double Picture::RangeInView(std::size_t index) const {
  const TChannel& channel = Channel(index);
  double highest = channel.zero;
  for (std::size_t i = 0; i < run_.channels[index].values.size(); ++i) {
    if (IsInView(index, i)) highest = std::max<double>(highest, channel.samples[i]);
  }
  return (highest - channel.zero) * static_cast<double>(channel.unitsPerCount);
}

// Units per pixel of a channel: those of another unit are scaled to the current channel's range.
double Picture::UnitsPerPixel(const TChannel& channel) const {
  const TChannel& current = Channel(static_cast<std::size_t>(host_.curchan()));
  if (Lower(channel.unit) == Lower(current.unit)) return view_.unitsPerPixel;
  const auto range = [](const TChannel& of) {
    return (static_cast<double>(of.rangeHigh) - of.rangeLow) *
           static_cast<double>(of.unitsPerCount);
  };
  return range(current) > 0 && range(channel) > 0
             ? view_.unitsPerPixel * range(channel) / range(current)
             : view_.unitsPerPixel;
}

// The rows that a trace covers.
TraceBands Picture::BandsOf(const Trace& trace, const YVAL& yval) const {
  const double offsetS = host_.timeOffsetMs / 1000.0;
  const LONG columns = std::max<LONG>(render_.width - render_.rightReserve, 1);
  TraceBands bands(static_cast<std::size_t>(columns), kNoBand);
  double lastX = 0;
  double lastY = 0;
  for (std::size_t i = 0; i < trace.values.size(); ++i) {
    const double x = view_.x0 + (trace.TimeAt(i) - offsetS - view_.t0) / view_.timePerPixel;
    const double y = yval.Pixel(static_cast<int>(i));
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

// Of every trace that is drawn, auxiliary ones too.
std::vector<TraceBands> Picture::Bands() {
  std::vector<TraceBands> all;
  for (std::size_t c = 0; c < run_.channels.size(); ++c) {
    all.push_back(
        BandsOf(run_.channels[c], YVAL(&Channel(c), render_.getoffset(static_cast<int>(c)),
                                       UnitsPerPixel(Channel(c)), false, 0, 0)));
  }
  for (std::size_t c = 0; c < run_.auxiliary.size(); ++c) {
    all.push_back(
        BandsOf(run_.auxiliary[c], AuxValues(*host_.auxChannels.At(static_cast<LONG>(c)))));
  }
  return all;
}

// The rows of an auxiliary channel's values.
YVAL Picture::AuxValues(const TChannel& channel) {
  const double scale = render_.dAuxScale();
  return {&channel, view_.plotBottom + static_cast<int>(view_.auxMin / scale), scale, false, 0, 0};
}

// As the view makes it.
std::string Picture::LabelText(int number) const {
  const PeakRecord& peak = *host_.peaks.At(number - 1);
  const component* of = host_.calibration.components.At(peak.component - 1);
  const int mode = LabelMode();
  char text[100];
  if (mode == 2) {
    std::snprintf(text, sizeof text, "%.2f", host_.units(host_.rtime(number)));
  } else if (mode == 3 && of != nullptr) {
    std::snprintf(text, sizeof text, "%s", of->name);
  } else if (mode == 4 && of != nullptr) {
    std::snprintf(text, sizeof text, "%s %.3f", of->name, static_cast<double>(peak.amount));
  } else {
    std::snprintf(text, sizeof text, "%d", number);
  }
  return text;
}

// Where the view writes the label of a peak above its apex.
LabelBox Picture::BoxOf(int number) {
  const PeakRecord& peak = *host_.peaks.At(number - 1);
  const bool vertical = IsVertical(peak);
  const std::string text = LabelText(number);
  const int current = host_.curchan();
  const TChannel& channel = Channel(static_cast<std::size_t>(current));
  const YVAL yval(&channel, render_.getoffset(current), view_.unitsPerPixel, false, 0, 0);
  const double time = static_cast<double>(host_.sampleInterval) * peak.apex;
  const LONG x =
      static_cast<LONG>(std::floor(view_.x0 + (time - view_.t0) / view_.timePerPixel + 0.5));
  const LONG bottom = yval.Pixel(peak.apex) - 2 * render_.charHeight / 3;

  SIZE extent{0, 0};
  const HGDIOBJ previous = SelectObject(hdc_, vertical ? labelFont_.Handle() : font_.Handle());
  GetTextExtentPoint32A(hdc_, text.c_str(), static_cast<int>(text.size()), &extent);
  SelectObject(hdc_, previous);
  const double height = (channel.samples[peak.apex] -
                         0.5 * (static_cast<double>(peak.baselineStart) + peak.baselineEnd));
  if (vertical) {
    const LONG right = x + render_.charHeight / 2;
    return {{right - extent.cy, bottom - extent.cx, right, bottom}, height};
  }
  return {{x - extent.cx / 2, bottom - extent.cy, x + extent.cx / 2, bottom}, height};
}

// Where the view writes the names of the channels. Those that it leaves out are missing.
std::vector<RECT> Picture::NameBoxes(bool list) {
  const LONG third = render_.charHeight / 3;
  const double offsetS = host_.timeOffsetMs / 1000.0;
  const HGDIOBJ previous = SelectObject(hdc_, font_.Handle());
  std::vector<RECT> boxes;
  LONG lowest = 0;
  for (std::size_t c = 0; c < run_.channels.size(); ++c) {
    const std::string text = NameText(Channel(c));
    SIZE extent{0, 0};
    GetTextExtentPoint32A(hdc_, text.c_str(), static_cast<int>(text.size()), &extent);
    LONG left = view_.x0 + render_.charWidth;
    LONG top = (static_cast<LONG>(c) + 2) * render_.charHeight + third;
    if (!list) {
      const Trace& trace = run_.channels[c];
      std::size_t first = 0;
      while (first + 1 < trace.values.size() && trace.TimeAt(first) - offsetS < view_.t0) ++first;
      const YVAL yval(&Channel(c), render_.getoffset(static_cast<int>(c)),
                      UnitsPerPixel(Channel(c)), false, 0, 0);
      const double y = yval.Value(static_cast<int>(first));
      if (!(y > 0 && y < 16'382 && third / 2 + y > lowest)) continue;
      left = view_.x0 + render_.charWidth / 2;
      top = static_cast<LONG>(y) + third / 2;
      lowest = top + extent.cy;
    }
    boxes.push_back({left, top, left + extent.cx, top + extent.cy});
  }
  for (LONG c = 0; c < host_.auxChannels.count; ++c) {
    const TChannel& channel = *host_.auxChannels.At(c);
    const std::string_view text = channel.name;
    SIZE extent{0, 0};
    GetTextExtentPoint32A(hdc_, text.data(), static_cast<int>(text.size()), &extent);
    const LONG left = render_.width - extent.cx - render_.rightReserve - render_.charWidth / 2;
    const LONG top = list ? (c + 2) * render_.charHeight + third
                          : AuxValues(channel).Pixel(channel.sampleCount - 1);
    boxes.push_back({left, top, left + extent.cx, top + extent.cy});
  }
  SelectObject(hdc_, previous);
  return boxes;
}

bool Picture::NamesHaveRoom(bool list, const std::vector<TraceBands>& bands) {
  const std::vector<RECT> boxes = NameBoxes(list);
  return boxes.size() == run_.channels.size() + run_.auxiliary.size() &&
         std::none_of(boxes.begin(), boxes.end(), [&](const RECT& box) {
           return box.bottom > view_.plotBottom || IsCrossed(box, bands);
         });
}

// Names beside the traces, or as a list; where neither has room, with the auxiliary traces lower or
// without the names' descriptions.
void Picture::ChooseNames() {
  const auto set = [this](bool list) {
    view_.flags = static_cast<WORD>(list ? view_.flags | THoldWindow::kNameList
                                         : view_.flags & ~THoldWindow::kNameList);
  };
  set(options_.names == Names::kList);
  if (options_.names != Names::kAuto) return;
  for (const bool whole : {true, false}) {
    for (LONG i = 0; i < host_.channels.count && !whole; ++i) {
      host_.channels.At(i)->description = "";
    }
    for (const double headroom : {kAuxHeadroom, kAuxHighHeadroom}) {
      auxHeadroom_ = headroom;
      Fit();
      const std::vector<TraceBands> bands = Bands();
      for (const bool list : {false, true}) {
        set(list);
        if (NamesHaveRoom(list, bands)) return;
      }
      if (run_.auxiliary.empty()) break;
    }
  }
  set(false);
  auxHeadroom_ = kAuxHeadroom;
  Fit();
}

// Takes away the labels of the current channel's peaks that would be unreadable, those of smaller
// peaks first. The view labels all peaks or none; but a component may have any name, an empty one
// too, so that the labels become names. What remains of such a label is its tick; peaks too flat to
// be seen go without it.
void Picture::DropCrowdedLabels() {
  const LONG count = host_.peaks.count;
  if (LabelMode() == 0 || count == 0) return;
  std::vector<LabelBox> boxes;
  for (int k = 1; k <= count; ++k) boxes.push_back(BoxOf(k));
  const bool list = (view_.flags & THoldWindow::kNameList) != 0;
  // One of the spare components has the empty name.
  const std::vector<bool> chosen = LabelsWithRoom(
      boxes, Bands(), {view_.x0, 0, render_.width - render_.rightReserve, render_.height},
      static_cast<int>(render_.charHeight / 5), NameBoxes(list), kSpareComponents - 1);
  if (std::find(chosen.begin(), chosen.end(), false) == chosen.end()) return;

  const LONG spare = static_cast<LONG>(NamedComponents(run_));
  const WORD noName = static_cast<WORD>(spare + 1);
  WORD next = static_cast<WORD>(noName + 1);
  const double flat = kFlatPx * view_.unitsPerPixel / UnitsPerCount();
  std::vector<PeakRecord> table;
  for (int k = 1; k <= count; ++k) {
    const auto index = static_cast<std::size_t>(k) - 1;
    PeakRecord peak = *host_.peaks.At(k - 1);
    const std::string text = LabelText(k);
    if (!chosen[index]) {
      if (boxes[index].weight < flat) continue;
      peak.component = noName;
    } else if (!IsVertical(peak)) {
      peak.component = 0;
    } else {
      component& of = *host_.calibration.components.At(next - 1);
      std::snprintf(of.name, sizeof of.name, "%s", text.c_str());
      peak.component = next++;
    }
    table.push_back(peak);
  }
  static_cast<void>(host_.SetPeaks(host_.curchan(), std::move(table), true));
  view_.flags = static_cast<WORD>((view_.flags & ~THoldWindow::kLabelMode) | 3);
  Fit();
}

void Picture::FillMargins() {
  RECT all{0, 0, Scaled(options_.widthPx, options_), Scaled(options_.heightPx, options_)};
  const HBRUSH brush = CreateSolidBrush(view_.colours.back());
  FillRect(hdc_, &all, brush);
  DeleteObject(brush);
}

}  // namespace

double DefaultFontPx(int heightPx) { return std::max(12.0, 12.0 + (heightPx - 300) / 75.0); }

bool DrawPicture(RunData& run, const DisplayOptions& options, gfx::Surface& surface,
                 std::string& error) {
  if (!Choose(run, options, error)) return false;
  const embedded::RunRef host = HostRun(run, error);
  if (host == nullptr) return false;
  surface = gfx::Surface(Scaled(options.widthPx, options), Scaled(options.heightPx, options));
  return Picture(run, options, *host, surface).Draw(error);
}

}  // namespace app
