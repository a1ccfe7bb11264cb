#include <stdexcept>

#include "elugraph/chromview/channel_pass.h"
#include "elugraph/chromview/chrom_render.h"
#include "elugraph/chromview/guard.h"
#include "elugraph/chromview/name_stacks.h"
#include "elugraph/host/kernel.h"

namespace {

constexpr int kFewChannels = 8;  // up to here the channel number is the colour slot
constexpr int kNameMode = 3;
constexpr int kAmountMode = 4;

class SolidBrush {
 public:
  explicit SolidBrush(COLORREF color) : handle_(CreateSolidBrush(color)) {}
  SolidBrush(const SolidBrush&) = delete;
  SolidBrush& operator=(const SolidBrush&) = delete;
  ~SolidBrush() { DeleteObject(handle_); }
  HBRUSH handle() const { return handle_; }

 private:
  HBRUSH handle_;
};

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Without regard to the case of ASCII letters.
bool SameUnit(const TChannel& a, const TChannel& b) {
  for (std::size_t i = 0; i < sizeof a.unit; ++i) {
    if (Lower(a.unit[i]) != Lower(b.unit[i])) return false;
    if (a.unit[i] == '\0') break;
  }
  return true;
}

double RawRange(const TChannel& channel) {
  return static_cast<double>(channel.rangeHigh) - channel.rangeLow;
}

// Units of a channel per unit of the current one, such that a channel of another unit spans its
// full range over the height of the current channel's range.
double UnitFactor(const TChannel& channel, const TChannel* current) {
  if (current == nullptr || current == &channel || SameUnit(channel, *current)) return 1.0;
  if (!(RawRange(channel) > 0 && RawRange(*current) > 1 && current->unitsPerCount > 0)) return 1.0;
  return channel.unitsPerCount * RawRange(channel) / (current->unitsPerCount * RawRange(*current));
}

}  // namespace

void TChromRender::showchrom(HDC hdc, bool erase, RECT& rect, int flags) {
  if (!chrom) return;
  Guarded([&] {
    if (!chrom->bHasRawData()) {
      FillRect(hdc, &rect, GetSysColorBrush(COLOR_WINDOW));
      return;
    }
    const int level = SaveDC(hdc);
    // A failing report costs the report, not what follows it.
    if (!Guarded([&] { Picture(hdc, erase, rect, flags); })) {
      Guarded([] { exceptout("showchrom catched"); });
    }
    // Back to the state saved above, also past levels that a failure left behind.
    RestoreDC(hdc, level);
    chrom->recalctime();
  });
}

void TChromRender::Picture(HDC hdc, bool erase, RECT& rect, int flags) {
  if (View() == nullptr) throw std::runtime_error("no display settings");
  const THoldWindow& view = *View();
  SetTextColor(hdc, view.colours.axis());
  SelectObject(hdc, font);
  SetBkMode(hdc, TRANSPARENT);
  if (erase) FillRect(hdc, &rect, SolidBrush(Background()).handle());
  if ((flags & kPassFit) != 0) {
    FitTime();
    FitSignal(hdc);
  }
  if ((flags & kPassIncremental) == 0) {
    const int labelMode = view.flags & THoldWindow::kLabelMode;
    if (labelMode == kNameMode) chrom->recognize();
    if (labelMode == kAmountMode) chrom->update_quant();
    DrawAxes(hdc, flags);
  }
  IntersectClipRect(hdc, view.x0, 0, width - rightReserve, height);
  if (auxPosition == 0) DrawAuxTrace(hdc, erase, rect, flags);
  DrawChannels(hdc, rect, flags);
  if (auxPosition == 1) DrawAuxTrace(hdc, erase, rect, flags);
}

COLORREF TChromRender::Background() const {
  const ORVWCOLORS& colours = View()->colours;
  return chrom->useBackColor != 0 ? colours.back() : colours.alterground();
}

void TChromRender::DrawChannels(HDC hdc, RECT& rect, int flags) {
  NameStacks stacks{0, rect.bottom};
  const int channelCount = chrom->channelCount;
  int drawn = 0;
  for (int ch = 0; ch < channelCount; ++ch) {
    TChannel* channel = chrom->channels.At(ch);
    const bool selected =
        markMode == 0 ? channel != nullptr && channel->visible != 0 : ch == chrom->curchan();
    if (!selected) continue;
    ++drawn;
    if (channel == nullptr || channel->samples == nullptr) continue;
    ChannelPass pass;
    pass.channelIndex = static_cast<short>(ch);
    pass.channel = channel;
    pass.data = channel->samples;
    pass.count = channel->sampleCount;
    pass.lastDrawn = channel->lastDrawnIndex;
    if (!channelRange(pass, hdc, rect, flags)) continue;
    DrawChannel(pass, drawn, stacks, hdc, rect, flags);
  }
}

// `drawn`: the how manieth selected channel it is.
void TChromRender::DrawChannel(ChannelPass& pass, int drawn, NameStacks& stacks, HDC hdc,
                               RECT& rect, int flags) {
  const THoldWindow& view = *View();
  PrepareScale(pass);
  const int number = chrom->channelCount <= kFewChannels ? pass.channelIndex : drawn - 1;
  const int slot = number % kFewChannels;
  const int style = pass.channel->penStyle;
  pass.penWidth = PenWidth(view.thickness[slot], charHeight);
  pass.traceColour = view.colours.chan(slot, ChromColor::none);
  SetTextColor(hdc, pass.traceColour);
  pass.baselineHandle = CreatePen(style, pass.penWidth, view.colours.baseline());
  pass.baselinePen.emplace(hdc, pass.baselineHandle);
  pass.traceHandle = CreatePen(style, pass.penWidth, pass.traceColour);
  pass.tracePen.emplace(hdc, pass.traceHandle);

  const bool incremental = (flags & kPassIncremental) != 0;
  if (!incremental) DrawName(pass, drawn, stacks, hdc);
  const bool traceDone = Guarded([&] {
    pass.pool.emplace(PoolCapacity(rect.right, 16), &rect, hdc);
    drawTrace(pass, hdc, rect);
  });
  if (!traceDone) Guarded([] { exceptout("draft draw()"); });
  const bool wantsPeaks = (view.flags & (THoldWindow::kBaselines | THoldWindow::kLabelMode)) != 0;
  if (!incremental && wantsPeaks) drawPeaks(pass, hdc, rect);
}

void TChromRender::PrepareScale(ChannelPass& pass) {
  const THoldWindow& view = *View();
  pass.drift = chrom->state == 0 && (view.flags & THoldWindow::kSubtractDrift) != 0;
  if (pass.drift) {
    pass.slope = (static_cast<double>(pass.data[pass.count - 1]) - pass.data[0]) / pass.count;
    pass.intercept = -pass.slope * chrom->driftZeroIndex;
  }
  const double factor = UnitFactor(*pass.channel, chrom->channels.At(chrom->curchan()));
  pass.yval = YVAL(pass.channel, getoffset(pass.channelIndex), view.unitsPerPixel * factor,
                   pass.drift, pass.intercept, pass.slope);
}
