// What one drawing pass knows about one channel.
#pragma once

#include <optional>

#include "elugraph/host/records.h"
#include "elugraph/trace/gdi_object_holders.h"
#include "elugraph/trace/get_time.h"
#include "elugraph/trace/poly_line_pool.h"
#include "elugraph/trace/yval.h"

// Positions are device units, times seconds. Made on the stack for one channel and filled step by
// step: the pass sets channel, samples, conversion and pens, channelRange the range.
struct ChannelPass {
  short channelIndex = 0;
  TChannel* channel = nullptr;
  const LONG* data = nullptr;
  int count = 0;
  LONG lastDrawn = 0;  // last drawn sample of the pass before, as read at the start

  double startPeriod = 0;  // for the start index: the period before the host updated it
  double period = 0;       // for all positions
  double timePerPixel = 0;
  int x0 = 0;             // column of the view's start
  int plotWidth = 0;      // columns of the view's time range: those between the strips
  int xLeft = 0;          // first column to draw
  int xRight = 0;         // last column the per-pixel path draws
  double timeLeft = 0;    // time at xLeft
  double startIndex = 0;  // first sample to draw, fractional

  YVAL yval{nullptr, 0, 1.0, false, 0.0, 0.0};
  bool drift = false;  // the line intercept + index × slope (counts) is subtracted
  double slope = 0;
  double intercept = 0;

  COLORREF traceColour = 0;
  int penWidth = 0;
  HPEN baselineHandle = nullptr;  // owned by the two holders below
  HPEN traceHandle = nullptr;
  // In the order of selection: the trace pen is the current one, and destruction goes backwards.
  std::optional<GdiObjectSelector> baselinePen;
  std::optional<GdiObjectSelector> tracePen;
  std::optional<PolyLinePool> pool;

  // The time mapping of the channel in its view.
  GetTime Mapping(const THoldWindow& view) const {
    return GetTime(channel, view.t0, view.t1 - view.t0, static_cast<ULONG>(plotWidth), period,
                   timePerPixel);
  }
  int FirstSample() const { return TruncToInt32(startIndex); }
};

// Width of a pen of a thickness in percent of a text height.
inline int PenWidth(BYTE percent, LONG textHeight) {
  return SaturateToInt32(std::int64_t{percent} * textHeight / 100);
}

// Points asked of a pool: four per column up to the column `right`, plus `extra`.
inline int PoolCapacity(LONG right, int extra) {
  return SaturateToInt32(std::int64_t{4} * right + extra);
}
