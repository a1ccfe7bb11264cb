#include <cstdint>

#include "elugraph/trace/column_clocks.h"
#include "elugraph/trace/each_point.h"

namespace {

// ---- what a column emits ----

std::size_t Size(Taken taken) { return static_cast<std::size_t>(taken.samples); }

// Samples compared for min and max: not the last one of a column that ended before the data.
int ComparedSamples(Taken taken) {
  return taken.ended ? std::max(1, taken.samples - 1) : taken.samples;
}

void EmitRange(EachPoint& to, int lastIndex, const LONG* column, int samples, SampleRange range) {
  to.XStep(lastIndex, column[0], range.min, range.max, column[samples - 1]);
}

struct FirstMaxMinLast {
  void operator()(EachPoint& to, int lastIndex, const LONG* column, Taken taken) const {
    EmitRange(to, lastIndex, column, taken.samples,
              Kernels().range(column, ComparedSamples(taken)));
  }
};

struct FirstMaxMinLastOfAll {
  void operator()(EachPoint& to, int lastIndex, const LONG* column, Taken taken) const {
    EmitRange(to, lastIndex, column, taken.samples, Kernels().range(column, taken.samples));
  }
};

SampleRange RangeBySignOfDifference(const LONG* column, int samples) {
  SampleRange range{column[0], column[0]};
  for (int i = 1; i < samples; ++i) {
    if (WrapSub32(column[i], range.min) < 0) range.min = column[i];
    if (WrapSub32(range.max, column[i]) < 0) range.max = column[i];
  }
  return range;
}

struct FirstMaxMinLastBySign {
  void operator()(EachPoint& to, int lastIndex, const LONG* column, Taken taken) const {
    const int compared = ComparedSamples(taken);
    SampleRange range = Kernels().range(column, compared);
    // Within this spread no difference wraps, and the order of the comparisons does not matter.
    if (std::int64_t{range.max} - range.min > std::numeric_limits<LONG>::max()) {
      range = RangeBySignOfDifference(column, compared);
    }
    EmitRange(to, lastIndex, column, taken.samples, range);
  }
};

struct SignedMean {
  void operator()(EachPoint& to, int lastIndex, const LONG* column, Taken taken) const {
    to.XStepSingle(lastIndex,
                   static_cast<LONG>(Kernels().signedSum(column, Size(taken)) / taken.samples));
  }
};

struct UnsignedMean {
  void operator()(EachPoint& to, int lastIndex, const LONG* column, Taken taken) const {
    const std::uint64_t mean = Kernels().unsignedSum(column, Size(taken)) / Size(taken);
    to.XStepSingle(lastIndex, static_cast<LONG>(mean));
  }
};

// ---- the column-stepping rule ----

template <typename Emit, typename Clock>
void WalkColumns(EachPoint& to, int index, const LONG* data, int count, int xEnd, std::int64_t step,
                 Clock clock) {
  if (data == nullptr || index < 0 || index >= count) return;
  for (;;) {
    const Taken taken = clock.Take(index, count);
    if (taken.samples > 0) Emit()(to, index + taken.samples - 1, data + index, taken);
    index += taken.samples;
    if (index >= count) return;
    AdvanceColumns(clock.acc, step, to.xStep, to.x);
    if (to.x > xEnd) {
      to.XStepSingle(index, data[index]);
      return;
    }
  }
}

}  // namespace

void EachPoint::DrawExact(int index, const LONG* data, int samples, int xLimit, std::int64_t phase,
                          std::int64_t step, FixedPoint64 period) {
  const SteppedFractionClock clock{{SaturatingSub64(phase, step), period.value}};
  WalkColumns<FirstMaxMinLast>(*this, index, data, samples, xLimit, step, clock);
}

void EachPoint::DrawExactDiv(int index, const LONG* data, int samples, int xLimit,
                             std::int64_t phase, std::int64_t step, FixedPoint64 period) {
  const CountedFractionClock clock{{SaturatingSub64(phase, step), period.value}};
  WalkColumns<FirstMaxMinLastOfAll>(*this, index, data, samples, xLimit, step, clock);
}

void EachPoint::DrawMS(int index, const LONG* data, int samples, int xLimit, FixedPoint64 phase,
                       std::int64_t step, int period) {
  const SteppedWholeClock clock{{SaturatingSub64(phase.value, step), period}};
  WalkColumns<FirstMaxMinLast>(*this, index, data, samples, xLimit, step, clock);
}

void EachPoint::DrawMSAsm(int index, const LONG* data, int samples, int xLimit, FixedPoint64 phase,
                          std::int64_t step, int period) {
  const SteppedWholeClock clock{{SaturatingSub64(phase.value, step), period}};
  WalkColumns<FirstMaxMinLastBySign>(*this, index, data, samples, xLimit, step, clock);
}

void EachPoint::DrawXYAbs(int index, const LONG* data, int samples, int xLimit, FixedPoint64 phase,
                          FixedPoint64 step, const ULONG* times) {
  if (times == nullptr) return;
  const TimesClock clock{{SaturatingSub64(phase.value, step.value), 0}, times};
  WalkColumns<FirstMaxMinLast>(*this, index, data, samples, xLimit, step.value, clock);
}

void EachPoint::DrawXYDelta(int index, const LONG* data, int samples, int xLimit,
                            FixedPoint64 phase, FixedPoint64 step, const WORD* deltas) {
  if (deltas == nullptr) return;
  const DeltasClock clock{{SaturatingSub64(phase.value, step.value), 0}, deltas};
  WalkColumns<FirstMaxMinLast>(*this, index, data, samples, xLimit, step.value, clock);
}

void EachPoint::DrawMiddleExact(int index, const LONG* data, int samples, int xLimit,
                                std::int64_t phase, std::int64_t step, FixedPoint64 period) {
  const CountedFractionClock clock{{SaturatingSub64(phase, step), period.value}};
  WalkColumns<SignedMean>(*this, index, data, samples, xLimit, step, clock);
}

void EachPoint::DrawMiddleMSAsmSigned(int index, const LONG* data, int samples, int xLimit,
                                      std::int64_t phase, std::int64_t step, int period) {
  const CountedWholeClock clock{{SaturatingSub64(phase, step), period}};
  WalkColumns<SignedMean>(*this, index, data, samples, xLimit, step, clock);
}

void EachPoint::DrawMiddleExactAsmUnSigned(int index, const LONG* data, int samples, int xLimit,
                                           std::int64_t phase, std::int64_t step,
                                           FixedPoint64 period) {
  const SteppedFractionClock clock{{SaturatingSub64(phase, step), period.value}};
  WalkColumns<UnsignedMean>(*this, index, data, samples, xLimit, step, clock);
}

void EachPoint::DrawMiddleExactDivAsmUnSigned(int index, const LONG* data, int samples, int xLimit,
                                              std::int64_t phase, std::int64_t step,
                                              FixedPoint64 period) {
  const CountedFractionClock clock{{SaturatingSub64(phase, step), period.value}};
  WalkColumns<UnsignedMean>(*this, index, data, samples, xLimit, step, clock);
}

void EachPoint::DrawMiddleXYAbs(int index, const LONG* data, int samples, int xLimit,
                                FixedPoint64 phase, FixedPoint64 step, const ULONG* times,
                                FixedPoint64 /*startTime*/) {
  if (times == nullptr) return;
  const TimesClock clock{{phase.value, 0}, times};
  WalkColumns<SignedMean>(*this, index, data, samples, xLimit, step.value, clock);
}

void EachPoint::DrawMiddleXYDelta(int index, const LONG* data, int samples, int xLimit,
                                  FixedPoint64 phase, FixedPoint64 step, const WORD* deltas,
                                  FixedPoint64 /*startTime*/) {
  if (deltas == nullptr) return;
  const DeltasClock clock{{phase.value, 0}, deltas};
  WalkColumns<SignedMean>(*this, index, data, samples, xLimit, step.value, clock);
}

void EachPoint::DrawMiddleXYAsmUnSignedAbs(int index, const LONG* data, int samples, int xLimit,
                                           FixedPoint64 phase, FixedPoint64 step,
                                           const ULONG* times) {
  if (times == nullptr) return;
  const TimesClock clock{{SaturatingSub64(phase.value, step.value), 0}, times};
  WalkColumns<UnsignedMean>(*this, index, data, samples, xLimit, step.value, clock);
}

void EachPoint::DrawMiddleXYAsmUnSignedDelta(int index, const LONG* data, int samples, int xLimit,
                                             FixedPoint64 phase, FixedPoint64 step,
                                             const WORD* deltas) {
  if (deltas == nullptr) return;
  const DeltasClock clock{{SaturatingSub64(phase.value, step.value), 0}, deltas};
  WalkColumns<UnsignedMean>(*this, index, data, samples, xLimit, step.value, clock);
}
