// Automatic fitting of the signal range.
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "elugraph/chromview/chrom_render.h"
#include "elugraph/chromview/peak_label.h"
#include "elugraph/host/engine.h"
#include "elugraph/trace/arithmetic.h"

namespace {

constexpr double kMaxAuxValue = 1e100;
constexpr double kMinAuxSpan = 1e-100;
constexpr double kStepShrink = 1.1;
constexpr int kBehind = 0;  // places of the auxiliary trace
constexpr int kInFront = 1;

void NormaliseAuxRange(THoldWindow& view) {
  double low = view.auxMin;
  double high = view.auxMax;
  if (std::abs(high) > kMaxAuxValue) high = 100.0;
  if (std::abs(low) > kMaxAuxValue) low = 0.0;
  if (low > high) std::swap(low, high);
  if (std::abs(high - low) < kMinAuxSpan) {
    if (std::abs(high) < kMinAuxSpan) {
      high = 1.0;
    } else if (high > 0) {
      low = 0.0;
    } else {
      high = 0.0;
    }
  }
  view.auxMin = low;
  view.auxMax = high;
}

}  // namespace

// Fits the full scale to the current channel.
class TChromRender::SignalFit {
 public:
  SignalFit(TChromRender& render, THoldWindow& view, HDC hdc)
      : render_(render), view_(view), chrom_(*render.chrom.get()), hdc_(hdc) {}

  void Run() {
    if (chrom_.sampleCount == 0) return;
    channel_ = chrom_.channels.At(chrom_.curchan());
    if (channel_ == nullptr || channel_->samples == nullptr || channel_->sampleCount <= 0) return;
    ChooseWindow();
    render_.zero(minimum(channel_->samples, InSamples(first_), InSamples(last_)));
    view_.zeroFraction = 0;
    view_.channelStep = 0;
    render_.scalewindow();
    ShrinkStack();
    double full = FullScaleOfSamples();
    if ((view_.flags & THoldWindow::kLabelMode) != 0) full = WithLabels(full);
    view_.fullScale = full;
    render_.scalewindow();
  }

 private:
  LONG InSamples(LONG index) const { return std::clamp(index, 0, channel_->sampleCount - 1); }

  // The visible samples from the scaling start on.
  void ChooseWindow() {
    const double startSec = chrom_.scalingStartMin * 60.0;
    const bool startsInRun = chrom_.scalingStartMin < chrom_.runDurationMs / 60000.0;
    double from = chrom_.state < 5 || startsInRun ? startSec : 0.0;
    if (view_.t0 > from) from = view_.t0;
    last_ = TruncToInt32(view_.t1 / chrom_.sampleInterval);
    if (last_ >= channel_->sampleCount) last_ = channel_->sampleCount - 1;
    // A start within the view's last ten samples would leave nothing to fit to.
    if ((last_ - 10.0) * channel_->samplePeriod <= from) from = view_.t0;
    first_ = TruncToInt32(from / chrom_.sampleInterval);
  }

  // Keeps the stack of zero lines within the lower third of the plot.
  void ShrinkStack() {
    const int limit = std::max(2 * view_.plotHeight / 3 + render_.margin(), 0);
    while (render_.getoffset(0) <= limit) {
      if (!(view_.plotHeight * view_.channelStep > 0)) break;
      const double smaller = view_.channelStep / kStepShrink;
      if (smaller == view_.channelStep) break;
      view_.channelStep = smaller;
    }
    if (view_.channelStep == 0)
      view_.channelStep = 1.0 / (view_.plotHeight > 1 ? view_.plotHeight : 1);
  }

  double SignalAboveZero(LONG sample) const {
    return (static_cast<double>(sample) - channel_->zero) * channel_->unitsPerCount;
  }

  // The largest sample reaches the plot's top from the highest zero line.
  double FullScaleOfSamples() {
    const double unitsPerCount = channel_->unitsPerCount;
    const LONG index = maximum(channel_->samples, InSamples(first_), InSamples(last_));
    const LONG largest = channel_->samples[InSamples(index)];
    if (largest <= channel_->zero) return channel_->defaultFullScale * unitsPerCount;
    const int room = render_.getoffset(0) - render_.margin();
    const double whole = largest * unitsPerCount;
    if (room < 1) return whole;
    const double full = SignalAboveZero(largest) * view_.plotHeight / room;
    return full == 0 ? whole : full;
  }

  // Every peak in the window, standing on the current channel's zero line, ends below its label.
  double WithLabels(double full) {
    for (int number = 1; number <= chrom_.peakCount; ++number) {
      const PeakRecord* peak = chrom_.peaks.At(number - 1);
      if (peak == nullptr || peak->apex < 0 || peak->apex >= channel_->sampleCount) continue;
      if (peak->apex < first_ || peak->apex > last_) continue;
      const int room =
          render_.getoffset(chrom_.curchan()) - (render_.margin() + LabelHeight(number));
      if (room <= 0) continue;
      const double scale = static_cast<double>(view_.plotHeight) / room;
      full = std::max(full, SignalAboveZero(channel_->samples[peak->apex]) * scale);
    }
    return full;
  }

  LONG LabelHeight(int number) {
    const PeakLabel label(&chrom_, number);
    SelectObject(hdc_, label.Vertical() ? render_.labelFont : render_.font);
    SIZE extent{0, 0};
    GetTextExtentPoint32A(hdc_, label.Text(), label.Length(), &extent);
    return label.Height(extent);
  }

  TChromRender& render_;
  THoldWindow& view_;
  chromatogram& chrom_;
  HDC hdc_;
  TChannel* channel_ = nullptr;
  LONG first_ = 0;  // window of samples, both included; may lie outside the channel's
  LONG last_ = 0;
};

void TChromRender::FitSignal(HDC hdc) {
  THoldWindow* view = View();
  if (view == nullptr) return;
  if (auxPosition == kInFront) FitAuxiliary(*view);
  if (auxPosition == kBehind) SignalFit(*this, *view, hdc).Run();
}

void TChromRender::FitAuxiliary(THoldWindow& view) {
  if (chrom->auxChannels.count <= 0) return;
  double low = std::numeric_limits<double>::max();
  double high = std::numeric_limits<double>::lowest();
  for (LONG i = 0; i < chrom->auxChannels.Size(); ++i) {
    const TChannel* channel = chrom->auxChannels.At(i);
    if (channel == nullptr || channel->visible != 1 || channel->samples == nullptr) continue;
    for (LONG j = 0; j < channel->sampleCount; ++j) {
      const double value = static_cast<double>(channel->samples[j]) * channel->unitsPerCount;
      if (value > high) high = value;
      if (value < low && rightReserve > 0) low = value;
    }
  }
  view.auxMin = low;
  view.auxMax = high;
  NormaliseAuxRange(view);
  scalewindow();
}
