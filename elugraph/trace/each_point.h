// Walks the samples of one channel once, groups them by device column, and hands each column's
// first, largest, smallest and last sample, or its mean, to a pool.
//
// Units: times are milliseconds; phases, steps and periods given as 64-bit integers are
// FixedPoint64 values. x and y are device coordinates. Samples are raw counts.
#pragma once

#include "elugraph/host/export.h"
#include "elugraph/trace/fixed_point.h"
#include "platform/gfx/types.h"

class GetTime;
class PolyLinePool;
class YVAL;

// Built on the stack for one trace. Owns nothing: pool, conversion and mapping are the caller's and
// must outlive the calls.
//
// The fourteen loops share one rule. An accumulator holds the time of the next sample minus the end
// of the current column; it starts at phase − step. Samples are taken, each adding its time step,
// until the accumulator is no longer negative or the samples end; the column is emitted. Then the
// accumulator loses a step, and x grows by xStep, for each column up to the one that holds the next
// sample; empty columns are not emitted. The first column right of `xEnd` gets that sample alone,
// and the loop ends.
//
// Stepping loops put a sample that lies exactly on a column's end into the next column; counted
// loops, which compute a column's number of samples by division, put it into the current one.
// "Whole" loops do 32-bit arithmetic, which wraps, on the whole milliseconds and keep the fraction.
//
// Stated results where the rule alone has none:
// - An index below 0 or not below count, or a null array: the loop returns at once.
// - A period ≤ 0: all remaining samples share the current column, in the counted loops too.
// - An accumulator at or above the period at the start of a counted loop: the column holds no
//   sample and is passed over.
// - A step ≤ 0: the next sample lies infinitely many columns on. x saturates (and so ends the trace
//   right of xEnd); with an xStep ≤ 0 each further sample has a column of its own.
// - x and 64-bit times saturate instead of overflowing.
class ELUGRAPH_API EachPoint {
 public:
  // Sees (x, value) in place of the pool.
  using PointCallback = void (*)(int x, LONG value, void* pool, void* yval);
  // With a point callback: sees each exact column in its place.
  using ColumnCallback = void (*)(int x, LONG first, LONG min, LONG max, LONG last, void* pool,
                                  void* yval);

  // `xOrigin`: x of the view's left edge. `xEnd`: right limit. Either callback may be null.
  EachPoint(PolyLinePool& pool, YVAL& yval, GetTime& time, LONG lastIndex, int xOrigin, int xEnd,
            PointCallback pointCallback, ColumnCallback columnCallback);

  // Draws samples 0 … count − 1 of `data` from the absolute time `start` on, in columns of `step`
  // pixels, then draws and resets the pool. Returns the last x. `exact` emits first, largest,
  // smallest and last, otherwise the signed mean. Samples before `firstIndex` are skipped; where
  // that is not below count, or lies right of the limit, the call returns at once and leaves the
  // pool alone. `edge` may be null; it gets the point of the trace at x = xEnd, (xEnd, 0) where the
  // pool is empty.
  //
  // A start a period or more before time 0 begins with sample 0, at that sample's own column and at
  // that column's beginning. A time table shorter than `count` limits the samples.
  int Draw(int start, int step, const LONG* data, int count, bool exact, int firstIndex,
           POINT* edge);

  // ---- exact columns ----
  // 64-bit, stepping. The last sample of a column that ends before the data is not among those
  // compared for min and max.
  void DrawExact(int index, const LONG* data, int count, int xEnd, std::int64_t phase,
                 std::int64_t step, FixedPoint64 period);
  // 64-bit, counted. min and max include the last sample.
  void DrawExactDiv(int index, const LONG* data, int count, int xEnd, std::int64_t phase,
                    std::int64_t step, FixedPoint64 period);
  // Whole, stepping; `period` in ms.
  void DrawMS(int index, const LONG* data, int count, int xEnd, FixedPoint64 phase,
              std::int64_t step, int period);
  // As DrawMS, but a sample replaces the minimum where sample − min, and the maximum where
  // max − sample, is negative as a wrapping 32-bit difference. The same while a column spans less
  // than 2^31 counts.
  void DrawMSAsm(int index, const LONG* data, int count, int xEnd, FixedPoint64 phase,
                 std::int64_t step, int period);
  // Whole, stepping by the differences of `times` (absolute, ms, count entries).
  void DrawXYAbs(int index, const LONG* data, int count, int xEnd, FixedPoint64 phase,
                 FixedPoint64 step, const ULONG* times);
  // Whole, stepping by `deltas` (ms, count entries; entry i leads from sample i − 1 to i).
  void DrawXYDelta(int index, const LONG* data, int count, int xEnd, FixedPoint64 phase,
                   FixedPoint64 step, const WORD* deltas);

  // ---- one mean per column, truncated toward zero ----
  void DrawMiddleExact(int index, const LONG* data, int count, int xEnd, std::int64_t phase,
                       std::int64_t step, FixedPoint64 period);  // 64-bit, counted, signed
  void DrawMiddleMSAsmSigned(int index, const LONG* data, int count, int xEnd, std::int64_t phase,
                             std::int64_t step, int period);  // whole, counted, signed
  void DrawMiddleExactAsmUnSigned(int index, const LONG* data, int count, int xEnd,
                                  std::int64_t phase, std::int64_t step,
                                  FixedPoint64 period);  // 64-bit, stepping, unsigned
  void DrawMiddleExactDivAsmUnSigned(int index, const LONG* data, int count, int xEnd,
                                     std::int64_t phase, std::int64_t step,
                                     FixedPoint64 period);  // 64-bit, counted, unsigned
  // Whole, stepping, signed. These two start the accumulator at phase: the first column holds the
  // first sample alone, and the later ones lie one xStep further right than in the other loops.
  // `startTime` is not used.
  void DrawMiddleXYAbs(int index, const LONG* data, int count, int xEnd, FixedPoint64 phase,
                       FixedPoint64 step, const ULONG* times, FixedPoint64 startTime);
  void DrawMiddleXYDelta(int index, const LONG* data, int count, int xEnd, FixedPoint64 phase,
                         FixedPoint64 step, const WORD* deltas, FixedPoint64 startTime);
  // Whole, stepping, unsigned.
  void DrawMiddleXYAsmUnSignedAbs(int index, const LONG* data, int count, int xEnd,
                                  FixedPoint64 phase, FixedPoint64 step, const ULONG* times);
  void DrawMiddleXYAsmUnSignedDelta(int index, const LONG* data, int count, int xEnd,
                                    FixedPoint64 phase, FixedPoint64 step, const WORD* deltas);

  // Emits one exact column at x: the points first, max, min, last, in this order, truncated toward
  // zero (saturating). `index` is that of the last sample.
  void XStep(int index, LONG first, LONG min, LONG max, LONG last);
  // Emits one point at x.
  void XStepSingle(int index, LONG value);

  // Moves x from sample `index` to sample `target` without drawing. True: `phase` is the target's
  // offset within its column. False: the target is not below `count` (phase unchanged) or right of
  // xEnd. A target not above index gives true and leaves phase − step in `phase`.
  bool SkipTillCycle(int index, int target, int count, int xEnd, std::int64_t& phase,
                     std::int64_t step, FixedPoint64 period);

  LONG lastIndex;  // last sample emitted
  YVAL* yval;      // may be null: samples are their own y
  GetTime* time;
  PolyLinePool* pool;
  LONG x;      // current column; callers of a loop set it, xStep and count first, as Draw does
  LONG xStep;  // pixels per column
  LONG xOrigin;
  LONG xEnd;
  LONG count;
  PointCallback pointCallback;
  ColumnCallback columnCallback;

 private:
  // Runs the loop for the channel's kind and the mode.
  ELUGRAPH_INTERNAL void DrawColumns(int index, const LONG* data, int count, FixedPoint64 phase,
                                     FixedPoint64 columnTime, bool exact, int start);
  ELUGRAPH_INTERNAL void AddPoint(int index, LONG value);
};
