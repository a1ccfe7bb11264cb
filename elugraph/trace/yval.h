// Raw samples to device y. Header only: hosts build values of it without linking to it.
#pragma once

#include "elugraph/host/records.h"
#include "elugraph/trace/arithmetic.h"

#pragma pack(push, 1)

// y grows downward, so larger counts lie higher. A plain value; the samples are borrowed.
class YVAL {
 public:
  // `yOrigin`: device y of the channel's zero. `unitsPerPixel`: signal units per pixel; 0 gives an
  // infinite scale. With `linear`, the drift line intercept + index × slope (raw counts) is
  // subtracted. A null channel has no samples and the scale 0.
  YVAL(const TChannel* channel, int yOrigin_, double unitsPerPixel, bool linear_, double intercept_,
       double slope_)
      : data(channel != nullptr ? channel->samples : nullptr),
        yOrigin(yOrigin_),
        scale(channel != nullptr ? static_cast<double>(channel->unitsPerCount) / unitsPerPixel : 0),
        offset(channel != nullptr ? channel->zero : 0),
        linear(linear_),
        intercept(intercept_),
        slope(slope_) {}

  // Device y of a raw value at sample `index`, not rounded. The difference to the channel's zero
  // wraps at 32 bits.
  double ToY(LONG value, int index) const {
    const double v = WrapSub32(value, offset);
    return yOrigin - (linear ? v - intercept - index * slope : v) * scale;
  }
  // Device y of sample `index`; 0 without samples. The index is not checked.
  double Value(int index) const { return data != nullptr ? ToY(data[index], index) : 0.0; }
  // Value truncated and limited to −16385 … 16382.
  int Pixel(int index) const {
    const int y = TruncToInt32(Value(index));
    return y < -16385 ? -16385 : y > 16382 ? 16382 : y;
  }

  const LONG* data;
  LONG yOrigin;
  double scale;  // pixels per count
  LONG offset;   // counts
  bool linear;
  double intercept;  // counts
  double slope;      // counts per sample
};

#pragma pack(pop)

static_assert(sizeof(YVAL) == sizeof(void*) + 33);
