// How a column's samples are counted: the parts in which the reduction loops differ.
//
// A clock holds `acc`, the time of the next sample minus the end of the current column. Take
// answers how many of the samples from `index` on belong to the current column, and moves `acc` to
// the sample after them.
#pragma once

#include <algorithm>
#include <limits>

#include "elugraph/trace/arithmetic.h"
#include "elugraph/trace/fixed_point.h"
#include "elugraph/trace/reduce_kernels.h"

struct Taken {
  int samples;
  bool ended;  // the column ended; false: the data did, inside the column
};

inline Taken TakeUpTo(std::int64_t samplesInColumn, int left) {
  if (samplesInColumn > left) return {left, false};
  return {static_cast<int>(samplesInColumn), true};
}

inline constexpr std::int64_t kAllSamples = std::numeric_limits<std::int64_t>::max();
inline constexpr std::int64_t kAllColumns = std::numeric_limits<std::int64_t>::max();

// The smallest k ≥ 1 with acc + k × period ≥ 0, where acc + period is `next`.
template <typename Int>
std::int64_t StepsToColumnEnd(Int next, Int period) {
  if (next >= 0) return 1;
  if (period <= 0) return kAllSamples;
  // −next without its overflow, divided rounding up.
  return SaturatingAdd64(-(std::int64_t{next} + 1) / period, 2);
}

// Samples of a column by division; 0 where the next sample lies a period or more behind the column.
template <typename Int>
std::int64_t CountToColumnEnd(Int acc, Int period) {
  return std::max<std::int64_t>(0, SaturatingSub64(1, std::int64_t{acc} / period));
}

// Sample period as 64-bit fixed point.
struct FractionClock {
  std::int64_t acc;
  std::int64_t period;

  Taken Step(std::int64_t samples, int left) {
    const Taken taken = TakeUpTo(samples, left);
    acc = SaturatingAdd64(acc, SaturatingMul64(taken.samples, period));
    return taken;
  }
};

struct SteppedFractionClock : FractionClock {
  Taken Take(int index, int count) {
    return Step(StepsToColumnEnd(SaturatingAdd64(acc, period), period), count - index);
  }
};

struct CountedFractionClock : FractionClock {
  Taken Take(int index, int count) {
    return Step(period > 0 ? CountToColumnEnd(acc, period)
                           : StepsToColumnEnd(SaturatingAdd64(acc, period), period),
                count - index);
  }
};

// Sample period in whole milliseconds. The fraction of `acc` only moves with the columns.
struct WholeClock {
  std::int64_t acc;
  std::int32_t period;

  std::int32_t Whole() const { return FixedPoint64::OfValue(acc).whole; }
  void SetWhole(std::int32_t whole) {
    FixedPoint64 changed = FixedPoint64::OfValue(acc);
    changed.whole = whole;
    acc = changed.value;
  }
  Taken Step(std::int64_t samples, int left) {
    const Taken taken = TakeUpTo(samples, left);
    SetWhole(WrapAdd32(Whole(), WrapMul32(taken.samples, period)));
    return taken;
  }
};

struct SteppedWholeClock : WholeClock {
  Taken Take(int index, int count) {
    return Step(StepsToColumnEnd(WrapAdd32(Whole(), period), period), count - index);
  }
};

struct CountedWholeClock : WholeClock {
  Taken Take(int index, int count) {
    return Step(period > 0 ? CountToColumnEnd(Whole(), period)
                           : StepsToColumnEnd(WrapAdd32(Whole(), period), period),
                count - index);
  }
};

// Absolute sample times. The data's last sample never ends a column: no time follows it.
struct TimesClock : WholeClock {
  const ULONG* times;

  Taken Take(int index, int count) {
    // The differences add up, so each sample's accumulator is its time plus one bias.
    const ULONG bias = static_cast<ULONG>(Whole()) - times[index];
    const auto inside = static_cast<int>(Kernels().leadingNegatives(
        times + index + 1, static_cast<std::size_t>(count - index - 1), bias));
    const int next = index + 1 + inside;
    if (next >= count) return {count - index, false};
    SetWhole(static_cast<LONG>(times[next] + bias));
    return {next - index, true};
  }
};

// Time differences to the sample before.
struct DeltasClock : WholeClock {
  const WORD* deltas;

  Taken Take(int index, int count) {
    const int lastIndex = count - 1;
    if (index >= lastIndex) return {1, false};
    // Not in the column any more: the next sample ends it, unless its time wraps to a negative one.
    int next = index + 1;
    LONG whole = WrapAdd32(Whole(), deltas[next]);
    if (whole < 0) {
      std::uint32_t sum = 0;
      next += 1 + static_cast<int>(Kernels().leadingBelow(
                      deltas + next + 1, static_cast<std::size_t>(lastIndex - next),
                      0U - static_cast<std::uint32_t>(whole), sum));
      if (next > lastIndex) return {count - index, false};
      whole = WrapAdd32(whole, static_cast<LONG>(sum + deltas[next]));
    }
    SetWhole(whole);
    return {next - index, true};
  }
};

// Moves `acc` and x from the current column to the one that holds the next sample, in one division
// however many empty columns lie between. With a step ≤ 0 there is no such column: x saturates.
inline void AdvanceColumns(std::int64_t& acc, std::int64_t step, int xStep, LONG& x) {
  std::int64_t columns = 1;
  acc = SaturatingSub64(acc, step);
  if (acc >= 0 && step > 0) {
    columns = SaturatingAdd64(acc / step, 2);
    acc = acc % step - step;
  } else if (acc >= 0) {
    columns = kAllColumns;
    acc = -1;
  }
  x = SaturateToInt32(SaturatingAdd64(x, SaturatingMul64(columns, xStep)));
}
