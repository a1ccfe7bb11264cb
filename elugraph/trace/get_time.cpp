#include "elugraph/trace/get_time.h"

#include <algorithm>
#include <cmath>

#include "elugraph/host/kernel.h"
#include "elugraph/trace/arithmetic.h"

namespace {

constexpr double kMsPerSecond = 1000.0;
constexpr double kFractions = 4294967296.0;  // per millisecond

// `period` and `tolerance` in ms. Rounds the period where the error summed over the channel's
// samples stays below the tolerance, one pixel: whole periods take the fast loops.
FixedPoint64 SnappedPeriod(const TChannel* channel, double period, double tolerance) {
  const double whole = std::trunc(period);
  const double fraction = period - whole;
  const std::int32_t wholeMs = TruncToInt32(whole);
  if (channel != nullptr) {
    const double samples = channel->sampleCount;
    if (tolerance > samples * fraction) return FixedPoint64::OfWhole(wholeMs);
    if (tolerance > samples * (whole + 1 - period)) {
      return FixedPoint64::OfWhole(SaturateToInt32(std::int64_t{wholeMs} + 1));
    }
  }
  FixedPoint64 exact = FixedPoint64::OfWhole(wholeMs);
  exact.fraction = TruncToUint32(fraction * kFractions);
  return exact;
}

// The entry after the first sample to draw: the first from the second on at `from` or later, the
// last where none is.
LONG EntryAtOrAfter(const TChannel& channel, std::int64_t from) {
  for (LONG i = 1; i < channel.sampleCount; ++i) {
    if (std::int64_t{channel.times[i]} - channel.timeBase >= from) return i;
  }
  return std::max<LONG>(0, channel.sampleCount - 1);
}

}  // namespace

GetTime::GetTime(TChannel* ofChannel, double viewStartS, double viewSpanS, ULONG widthPx,
                 double samplePeriodS, double secondsPerPixel)
    : channel(ofChannel),
      start(TruncToInt32(viewStartS * kMsPerSecond)),
      span(std::max<ULONG>(1, TruncToUint32(viewSpanS * kMsPerSecond))),
      width(widthPx),
      period(
          SnappedPeriod(ofChannel, samplePeriodS * kMsPerSecond, secondsPerPixel * kMsPerSecond)),
      samplePeriod(samplePeriodS),
      viewStart(viewStartS),
      timePerPixel(secondsPerPixel) {
  if (channel != nullptr && channel->times == nullptr) channel = nullptr;
}

std::int64_t GetTime::ColumnOf(FixedPoint64 t) const {
  return TruncToInt64(static_cast<double>(t.value) / kFractions * width / span + 0.5);
}

ULONG GetTime::Time2X(FixedPoint64& t) {
  return static_cast<ULONG>(
      std::clamp<std::int64_t>(ColumnOf(t), -(std::int64_t{1} << 31), 0xFFFFFFFF));
}

void GetTime::X2ExactTime(LONG x, FixedPoint64& t) {
  const double ms = x * timePerPixel * kMsPerSecond;
  const double value = ms * kFractions + 0.5;
  if (value >= -9223372036854775808.0 && value < 9223372036854775808.0) {
    t.value = static_cast<std::int64_t>(value);
  } else {
    t.value = ms >= 1.0 ? std::numeric_limits<std::int64_t>::max() : 0;
  }
}

int GetTime::tfrom2Idx(int startMs, FixedPoint64 step, FixedPoint64& phase) {
  int index = 0;
  phase = FixedPoint64::OfWhole(startMs);
  if (channel == nullptr) {
    index = static_cast<int>(TruncDiv(phase.value, period.value));
  } else if (channel->sampleCount <= 0) {
    phase.value = 0;
  } else {
    const std::int64_t column = std::int64_t{step.whole} + (step.fraction != 0 ? 1 : 0);
    const LONG next = EntryAtOrAfter(*channel, startMs + column);
    phase = FixedPoint64::OfWhole(WrapSub32(channel->times[next], channel->timeBase));
    index = std::max<LONG>(0, next - 1);
  }
  if (step.value == 0) {
    int3call();
    return index;
  }
  // The number of columns is kept in 32 bits.
  const auto columns = static_cast<std::int32_t>(TruncDiv(phase.value, step.value));
  phase.value = WrapSub64(phase.value, WrapMul64(columns, step.value));
  return index;
}

int GetTime::TableTime(int index) const {
  if (channel == nullptr || channel->sampleCount <= 0) return 0;
  const int entry = std::clamp(index, 0, channel->sampleCount - 1);
  return WrapSub32(WrapSub32(channel->times[entry], channel->timeBase), start);
}

void GetTime::IndexTime(int index, FixedPoint64& t) const {
  if (channel != nullptr) {
    t = FixedPoint64::OfWhole(TableTime(index));
  } else {
    t.value = WrapMul64(index, period.value);
    t.whole = WrapSub32(t.whole, start);
  }
}

double GetTime::SampleTime(int index) const {
  return channel != nullptr ? TableTime(index) / kMsPerSecond : index * samplePeriod - viewStart;
}
