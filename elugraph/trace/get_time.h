// Maps the time axis of one channel onto the columns of one view, and back.
//
// Units: doubles are seconds; integers and FixedPoint64 are milliseconds. Columns are device pixels
// counted from the view's left edge.
// Rounding: doubles truncate toward zero and saturate at the target's range (a NaN gives 0); a time
// half-way between two columns takes the right one.
// Lifetime: built on the stack for one drawing pass. The channel and its time table are borrowed
// and must not change meanwhile. No operation changes the object.
#pragma once

#include "elugraph/host/records.h"
#include "elugraph/trace/fixed_point.h"

class GetTime {
 public:
  // `viewStart`, `viewSpan` and `samplePeriod` in seconds, `timePerPixel` in seconds per pixel,
  // `width` in pixels. A null `channel` means equidistant samples of unknown number.
  //
  // A period with a fraction of a millisecond is rounded down, or else up, to whole milliseconds
  // where the error over all samples of the channel stays below one pixel; never without a channel.
  // A span that truncates to 0 ms or less counts as 1 ms.
  ELUGRAPH_API GetTime(TChannel* channel, double viewStart, double viewSpan, ULONG width,
                       double samplePeriod, double timePerPixel);

  // Column of `t`, a time relative to the view start. A column left of the view comes out negative
  // in two's complement, to be added to the view's left edge; beyond −2^31 … 2^32 − 1 it saturates.
  ELUGRAPH_API ULONG Time2X(FixedPoint64& t);
  // Time covered by `x` pixels, rounded to 2^-32 ms. Too large a product gives the largest value,
  // too small a one (or a NaN) 0.
  ELUGRAPH_API void X2ExactTime(LONG x, FixedPoint64& t);
  // The index of the first sample to draw for a trace that starts at the absolute time `start`;
  // `phase` gets the offset within its column, for columns of `step` each.
  //
  // Equidistant: index is start / period toward zero (negative before time 0, cut to 32 bits; 0 for
  // a period of 0) and phase is start modulo step, with the sign of start. Time table: the sample
  // before the first one, from the second on, that lies a column (rounded up to whole ms) or more
  // behind start, or the last but one; phase belongs to that later time. An empty table gives 0, 0.
  // A step of 0 calls int3call and leaves phase unreduced.
  ELUGRAPH_API int tfrom2Idx(int start, FixedPoint64 step, FixedPoint64& phase);

  // For channels with a time table: ms from the view start to sample `index`, which is limited to
  // the table. Wraps at 32 bits. 0 without entries.
  int TableTime(int index) const;
  // Time of sample `index` relative to the view start, for both kinds of channels.
  void IndexTime(int index, FixedPoint64& t) const;
  // The same in seconds.
  double SampleTime(int index) const;

  // The column of `t` as a signed number, saturated to 64 bits.
  std::int64_t ColumnOf(FixedPoint64 t) const;

  TChannel* channel;  // null unless it has a time table
  LONG start;         // ms
  ULONG span;         // ms, at least 1
  ULONG width;        // pixels
  FixedPoint64 period;
  double samplePeriod;  // seconds, as passed
  double viewStart;     // seconds, as passed
  double timePerPixel;  // seconds, as passed
};
