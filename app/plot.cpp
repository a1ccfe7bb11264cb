#include "app/plot.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "app/formats/text.h"
#include "app/picture.h"
#include "embedded/colours.h"
#include "platform/gfx/context.h"
#include "platform/gfx/text_engine.h"

namespace app {
namespace {

// Line widths, percent of the text line.
constexpr BYTE kTracePercent = 8;
constexpr BYTE kAxisPercent = 6;
constexpr double kLabelFontPart = 0.8;  // of the main font
constexpr LONG kMarkNothing = 3;        // but draw the current channel alone

}  // namespace

OwnedFont::OwnedFont(const std::string& family, double heightPx, int escapement) {
  LOGFONTA font;
  std::memset(&font, 0, sizeof font);
  font.lfHeight = -static_cast<LONG>(std::lround(std::max(heightPx, 4.0)));
  font.lfEscapement = escapement;
  font.lfOrientation = escapement;
  font.lfWeight = FW_NORMAL;
  family.copy(font.lfFaceName, sizeof font.lfFaceName - 1);
  handle_ = CreateFontIndirectA(&font);
}

OwnedFont::~OwnedFont() { DeleteObject(handle_); }

OwnedContext::OwnedContext(gfx::Surface& surface)
    : hdc_(gfx::CreateRasterContext(surface, gfx::SystemText())) {}

OwnedContext::~OwnedContext() { DeleteDC(hdc_); }

int Scaled(double px, const DisplayOptions& options) {
  return static_cast<int>(std::lround(px * options.scale));
}

Plot::Plot(RunData& drawn, const DisplayOptions& shown, embedded::Run& record,
           gfx::Surface& surface)
    : run(drawn),
      options(shown),
      host(record),
      view(record.View()),
      fontPx(shown.fontPx.value_or(DefaultFontPx(shown.heightPx)) * shown.scale),
      marginPx(static_cast<int>(fontPx / 2)),
      context(surface),
      hdc(context.Handle()),
      font(shown.font, fontPx, 0),
      labelFont(shown.font, fontPx * kLabelFontPart, 900),
      render(&record) {
  SetViewFlags();
  SetColours();
  SetRenderer();
}

void Plot::SetFlags(WORD bits, bool on) {
  view.flags = static_cast<WORD>(on ? view.flags | bits : view.flags & ~bits);
}

void Plot::SetViewFlags() {
  SetFlags(THoldWindow::kBaselines, options.baselines);
  SetFlags(THoldWindow::kPeakTicks, options.peakTicks);
  SetFlags(THoldWindow::kGrid, options.grid);
  SetFlags(THoldWindow::kSignalStrip, options.signalAxis);
  // With a reference level of 0 the "relative" axis shows the signal's own values.
  SetFlags(THoldWindow::kRelativeAxis, !options.relativeAxis);
  SetFlags(THoldWindow::kSubtractDrift, options.subtractDrift);
  SetFlags(THoldWindow::kExact, options.traces == TraceStyle::kExact);
  SetFlags(THoldWindow::kPerPixel, options.traces == TraceStyle::kPixel);
  SetFlags(THoldWindow::kLabelAll, true);
  host.SetTimeUnit(options.axisUnit == TimeUnit::kSecond ? embedded::TimeUnit::kSeconds
                   : options.axisUnit == TimeUnit::kHour ? embedded::TimeUnit::kHours
                                                         : embedded::TimeUnit::kMinutes);
}

void Plot::SetColours() {
  const auto scheme = embedded::ColourSchemeNamed(options.colours);
  if (scheme) view.colours = *scheme;
  view.auxColours = embedded::Muted(view.colours, static_cast<int>(run.channels.size() % 8));
  view.thickness = view.auxThickness = embedded::Thicknesses(kTracePercent, kAxisPercent);
}

void Plot::SetRenderer() {
  render.SetSize(Scaled(options.widthPx, options) - 2 * marginPx,
                 Scaled(options.heightPx, options) - 2 * marginPx);
  render.SetFonts(font.Handle(), labelFont.Handle());
  render.setFontSize(hdc);
  // The view would fill a selected peak: it gets its arrows from DrawArrows.
  render.markMode =
      options.markers == Markers::kSelected ? kMarkNothing : static_cast<LONG>(options.markers);
  render.selectedPeak = render.selectedPeakEnd = 0;
}

bool Plot::IsFilled(int peak) const {
  const int first = options.selectedPeak > 0 ? options.selectedPeak : options.fillFirst;
  return options.fillLast > 0 && first <= peak && peak <= options.fillLast;
}

COLORREF Plot::Colour(std::size_t channel) const {
  const bool alone = render.markMode != 0 && run.channels.size() > kColours;
  return view.colours.chan(alone ? 0 : static_cast<int>(channel % kColours), ChromColor::none);
}

bool Plot::SameUnit(std::size_t a, std::size_t b) const {
  return Lower(run.channels[a].unit) == Lower(run.channels[b].unit);
}

bool Plot::IsInView(std::size_t channel, std::size_t sample) const {
  const double time = run.channels[channel].TimeAt(sample) - OffsetS();
  return time >= view.t0 - view.timePerPixel && time <= view.t1 + view.timePerPixel;
}

// As the view does: channels of another unit are scaled to the current channel's range, and the
// drift is a line from the first sample to the last.
YVAL Plot::Rows(std::size_t channel) {
  const TChannel& of = Channel(channel);
  const TChannel& current = Channel(Current());
  const auto range = [](const TChannel& each) {
    return (static_cast<double>(each.rangeHigh) - each.rangeLow) *
           static_cast<double>(each.unitsPerCount);
  };
  double unitsPerPixel = view.unitsPerPixel;
  if (Lower(of.unit) != Lower(current.unit) && range(current) > 0 && range(of) > 0) {
    unitsPerPixel *= range(of) / range(current);
  }
  const double rise = static_cast<double>(of.samples[of.sampleCount - 1]) - of.samples[0];
  const double slope = options.subtractDrift ? rise / of.sampleCount : 0;
  return {&of,
          render.getoffset(static_cast<int>(channel)),
          unitsPerPixel,
          options.subtractDrift,
          -slope * host.driftZeroIndex,
          slope};
}

YVAL Plot::AuxRows(std::size_t channel) {
  const double scale = render.dAuxScale();
  return {host.auxChannels.At(static_cast<LONG>(channel)),
          view.plotBottom + static_cast<int>(view.auxMin / scale),
          scale,
          false,
          0,
          0};
}

}  // namespace app
