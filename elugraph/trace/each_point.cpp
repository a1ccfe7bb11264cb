#include "elugraph/trace/each_point.h"

#include "elugraph/trace/arithmetic.h"
#include "elugraph/trace/column_clocks.h"
#include "elugraph/trace/get_time.h"
#include "elugraph/trace/poly_line_pool.h"
#include "elugraph/trace/yval.h"

namespace {

// y of the trace at `xEnd`: on the last segment where that passes it, else that of the last point.
LONG YAtLimit(const PolyLinePool& pool, LONG xEnd) {
  if (pool.points == nullptr || pool.count <= 0) return 0;
  const POINT b = pool.points[pool.count - 1];
  if (pool.count == 1 || xEnd >= b.x) return b.y;
  const POINT a = pool.points[pool.count - 2];
  if (a.x == b.x) return static_cast<LONG>((std::int64_t{a.y} + b.y) / 2);
  const std::int64_t rise =
      TruncMulDiv(std::int64_t{b.y} - a.y, std::int64_t{xEnd} - a.x, std::int64_t{b.x} - a.x);
  return SaturateToInt32(a.y + rise);
}

}  // namespace

EachPoint::EachPoint(PolyLinePool& sink, YVAL& conversion, GetTime& mapping, LONG lastEmitted,
                     int originX, int endX, PointCallback onPoint, ColumnCallback onColumn)
    : lastIndex(lastEmitted),
      yval(&conversion),
      time(&mapping),
      pool(&sink),
      x(originX),
      xStep(1),
      xOrigin(originX),
      xEnd(endX),
      count(0),
      pointCallback(onPoint),
      columnCallback(onColumn) {}

int EachPoint::Draw(int start, int step, const LONG* data, int samples, bool exact, int firstIndex,
                    POINT* edge) {
  count = samples;
  xStep = step;
  if (const TChannel* table = time->channel; table != nullptr && samples > table->sampleCount) {
    samples = table->sampleCount;
  }

  FixedPoint64 columnTime;
  time->X2ExactTime(step, columnTime);
  FixedPoint64 phase;
  int index = time->tfrom2Idx(start, columnTime, phase);
  if (index < 0) {
    index = 0;
    phase.value = 0;
  }
  FixedPoint64 first;
  time->IndexTime(index, first);
  x = SaturateToInt32(SaturatingAdd64(xOrigin, time->ColumnOf(first)));
  if (firstIndex > index) {
    if (!SkipTillCycle(index, firstIndex, samples, xEnd, phase.value, columnTime.value,
                       time->period)) {
      return x;
    }
    index = firstIndex;
  }
  DrawColumns(index, data, samples, phase, columnTime, exact, start);
  if (edge != nullptr) *edge = {xEnd, YAtLimit(*pool, xEnd)};
  pool->Draw();
  pool->Reset();
  return x;
}

void EachPoint::DrawColumns(int index, const LONG* data, int samples, FixedPoint64 phase,
                            FixedPoint64 columnTime, bool exact, int start) {
  const FixedPoint64 period = time->period;
  if (time->channel != nullptr) {
    const auto* times = reinterpret_cast<const ULONG*>(time->channel->times);
    if (exact) {
      DrawXYAbs(index, data, samples, xEnd, phase, columnTime, times);
    } else {
      DrawMiddleXYAbs(index, data, samples, xEnd, phase, columnTime, times,
                      FixedPoint64::OfWhole(start));
    }
  } else if (period.fraction != 0) {
    if (exact) {
      DrawExact(index, data, samples, xEnd, phase.value, columnTime.value, period);
    } else {
      DrawMiddleExact(index, data, samples, xEnd, phase.value, columnTime.value, period);
    }
  } else if (exact) {
    DrawMSAsm(index, data, samples, xEnd, phase, columnTime.value, period.whole);
  } else {
    DrawMiddleMSAsmSigned(index, data, samples, xEnd, phase.value, columnTime.value, period.whole);
  }
}

void EachPoint::XStep(int index, LONG first, LONG min, LONG max, LONG last) {
  if (pointCallback == nullptr) {
    for (const LONG value : {first, max, min, last}) AddPoint(index, value);
  } else if (columnCallback == nullptr) {
    pointCallback(x, max, pool, yval);
  } else {
    columnCallback(x, first, min, max, last, pool, yval);
  }
  lastIndex = index;
}

void EachPoint::XStepSingle(int index, LONG value) {
  if (pointCallback == nullptr) {
    AddPoint(index, value);
  } else {
    pointCallback(x, value, pool, yval);
  }
  lastIndex = index;
}

void EachPoint::AddPoint(int index, LONG value) {
  (*pool)(x, yval != nullptr ? TruncToInt32(yval->ToY(value, index)) : value);
}

bool EachPoint::SkipTillCycle(int index, int target, int samples, int xLimit, std::int64_t& phase,
                              std::int64_t step, FixedPoint64 period) {
  if (target >= samples) return false;
  std::int64_t acc = SaturatingSub64(phase, step);
  if (target <= index) {
    phase = acc;
    return true;
  }
  acc = SaturatingAdd64(acc, SaturatingMul64(std::int64_t{target} - index, period.value));
  AdvanceColumns(acc, step, xStep, x);
  if (x > xLimit) return false;
  phase = SaturatingAdd64(acc, step);
  return true;
}
