// The engine's operations on the records, in terms of the run behind them. A record without a run
// (made by hand, or already gone) gets harmless answers.
#include <algorithm>
#include <cmath>

#include "elugraph/host/engine.h"
#include "embedded/run_parts.h"

using embedded::Run;

void chromatogram::AddRef() const {
  if (const Run* run = Run::Of(this)) ++run->references_;
}

void chromatogram::Release() const {
  const Run* run = Run::Of(this);
  if (run != nullptr && --run->references_ == 0) delete run;
}

chromatogram* chromatogram::pIs(const void* record) {
  Run* run = Run::Of(record);
  return run != nullptr && static_cast<chromatogram*>(run) == record ? run : nullptr;
}

bool chromatogram::bHasRawData() {
  const Run* run = Run::Of(this);
  return run != nullptr && std::any_of(run->channels_.begin(), run->channels_.end(),
                                       [](const auto& each) { return each->sampleCount > 0; });
}

// The time of the last sample; a single sample lasts one period.
double chromatogram::ActualDuration() {
  return runDurationMs > 0 ? runDurationMs / 1000.0 : static_cast<double>(sampleInterval);
}

short& chromatogram::curchan() {
  static short none = 0;
  Run* run = Run::Of(this);
  return run != nullptr ? run->currentChannel_ : none;
}

double chromatogram::units(double seconds) {
  const Run* run = Run::Of(this);
  return seconds / (run != nullptr ? run->SecondsPerUnit() : 60.0);
}

double chromatogram::rtime(int number) {
  const Run* run = Run::Of(this);
  const PeakRecord* peak = peaks.At(number - 1);
  return run != nullptr && peak != nullptr ? run->TimeAt(run->shownChannel_, peak->apex) : 0.0;
}

void chromatogram::zero(LONG index) {
  const Run* run = Run::Of(this);
  Run::Channel* channel = run != nullptr ? run->Current() : nullptr;
  if (channel != nullptr && index >= 0 && index < channel->sampleCount) {
    channel->TChannel::zero = channel->sampleStore[static_cast<std::size_t>(index)];
  }
}

void chromatogram::basecalc(int channel) {
  if (Run* run = Run::Of(this)) run->ShowPeaks(channel);
}

void chromatogram::recognize() {
  if (Run* run = Run::Of(this)) run->Identify();
}

// Amounts belong to components: identifies first.
void chromatogram::update_quant() {
  if (Run* run = Run::Of(this)) {
    run->Identify();
    run->Quantify();
  }
}

void chromatogram::recalctime() {
  if (Run* run = Run::Of(this)) run->Publish();
}

int chromatogram::splitIndex() { return channelCount; }

float TChannel::GetCyctimeRT() { return samplePeriod; }

void TChannel::UpdateCyctimeRT() {
  // Auxiliary channels have tables of their own and are not looked for.
  const Run* run = Run::Of(this);
  if (run == nullptr || run->state != 5 || sampleCount < 2) return;
  for (const auto& channel : run->channels_) {
    if (channel.get() != this) continue;
    const double seconds = !channel->hasTable
                               ? channel->measuredEndSec
                               : (channel->TimeMs(sampleCount - 1) - channel->TimeMs(0)) / 1000.0;
    if (seconds > 0.0) samplePeriod = static_cast<float>(seconds / (sampleCount - 1));
  }
}

const char* THoldWindow::xunitsTxt() const {
  const Run* run = Run::Of(this);
  return run != nullptr ? run->UnitText() : "min";
}
