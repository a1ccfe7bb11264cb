#include "platform/gfx/driver/raster_lines.h"

#include <algorithm>

#include "platform/gfx/driver/integer_math.h"

namespace gfx {
namespace {

struct DashPattern {
  std::uint64_t on;
  unsigned period;
};

constexpr std::uint64_t Run(unsigned length, unsigned at) {
  return ((std::uint64_t{1} << length) - 1) << at;
}

DashPattern PatternOf(int style) {
  switch (style) {
    case PS_DASH:
      return {Run(12, 0), 17};
    case PS_DOT:
      return {Run(1, 0), 3};
    case PS_DASHDOT:
      return {Run(10, 0) | Run(2, 14), 20};
    case PS_DASHDOTDOT:
      return {Run(10, 0) | Run(2, 14) | Run(2, 20), 26};
    default:
      return {0, 0};
  }
}

// One axis of a line: start, direction and length, and the visible range as counts of steps.
struct Axis {
  Axis(std::int64_t from, std::int64_t to, std::int64_t low, std::int64_t high)
      : length(Magnitude(to - from)), forward(to >= from) {
    first = forward ? low - from : from - (high - 1);
    end = forward ? high - from : from - low + 1;
  }
  std::uint64_t length;
  bool forward;
  std::int64_t first;  // steps in [first, end) are visible
  std::int64_t end;
};

// The rounding of one line: after k major steps the minor axis has made
// floor(k × minor / major) steps, and one more where the remainder reaches `threshold`.
struct Rounding {
  Rounding(std::uint64_t majorLength, std::uint64_t minorLength, bool minorForward)
      : major(majorLength),
        minor(minorLength),
        threshold(minorForward ? majorLength / 2 + 1 : (majorLength + 1) / 2) {}
  // The first k with at least `steps` minor steps; `none` where there is none.
  std::int64_t FirstWith(std::int64_t steps, std::int64_t none) const {
    if (steps <= 0) return 0;
    if (static_cast<std::uint64_t>(steps) > minor) return none;
    const std::uint64_t distance = static_cast<std::uint64_t>(steps) * major - (major - threshold);
    return static_cast<std::int64_t>(distance / minor + (distance % minor != 0));
  }
  std::uint64_t major, minor, threshold;
};

}  // namespace

Stroke::Stroke(const Pen& pen)
    : width_(pen.style == PS_NULL ? 0 : std::clamp(pen.width, 1, kMaxPenWidth)),
      pixel_(PixelOf(pen.color)),
      fillsGaps_(pen.bkMode == OPAQUE),
      gapPixel_(PixelOf(pen.bkColor)) {
  if (width_ == 1) {
    const DashPattern dashes = PatternOf(pen.style);
    pattern_ = dashes.on;
    period_ = dashes.period;
  }
  if (width_ > 1 && width_ <= kDiscTable) {
    for (int row = 0; row <= width_; ++row) {
      disc_[row] = static_cast<std::uint8_t>(
          IntegerRoot(static_cast<std::uint64_t>(width_) * width_ - row * row));
    }
  }
}

void Stroke::Polyline(const Canvas& canvas, const POINT* points, int count, bool closed) {
  if (Invisible() || canvas.Empty()) return;
  for (int i = 1; i < count; ++i) Line(canvas, points[i - 1], points[i]);
  if (closed && count > 1) Line(canvas, points[count - 1], points[0]);
}

void Stroke::Line(const Canvas& canvas, POINT from, POINT to) {
  if (Wide()) {
    Capsule(canvas, from, to);
  } else if (!Invisible()) {
    Cosmetic(canvas, from, to);
  }
}

template <bool dashed>
void Stroke::Steps(const Canvas& canvas, std::ptrdiff_t place, std::ptrdiff_t majorStep,
                   std::ptrdiff_t minorStep, std::int64_t error, std::int64_t minorLength,
                   std::int64_t majorLength, std::int64_t count, std::uint64_t phase) const {
  std::uint32_t* const pixels = canvas.Row(0);
  for (; count > 0; --count) {
    if (dashed) {
      PaintInPeriod(pixels[place], phase);
      if (++phase == period_) phase = 0;
    } else {
      pixels[place] = pixel_;
    }
    place += majorStep;
    error += minorLength;
    if (error >= 0) {
      error -= majorLength;
      place += minorStep;
    }
  }
}

void Stroke::Cosmetic(const Canvas& canvas, POINT from, POINT to) {
  Axis x(from.x, to.x, canvas.Left(), canvas.Right());
  Axis y(from.y, to.y, canvas.Top(), canvas.Bottom());
  const bool steep = y.length > x.length;
  const Axis &major = steep ? y : x, &minor = steep ? x : y;
  const std::uint64_t phase = phase_;
  if (Dashed()) phase_ = (phase_ + major.length) % period_;

  // Counts of steps are below 2^32 and lengths too, so their products fit 64 bits.
  const auto length = static_cast<std::int64_t>(major.length);
  std::int64_t first = std::max<std::int64_t>(major.first, 0);
  std::int64_t end = std::min(major.end, length);
  const Rounding rounding(major.length, minor.length, minor.forward);
  first = std::max(first, rounding.FirstWith(minor.first, length));
  if (minor.end <= 0) return;
  end = std::min(end, rounding.FirstWith(minor.end, length));
  if (first >= end) return;

  const std::uint64_t distance = static_cast<std::uint64_t>(first) * minor.length;
  auto minorSteps = static_cast<std::int64_t>(distance / major.length);
  auto error = static_cast<std::int64_t>(distance % major.length) -
               static_cast<std::int64_t>(rounding.threshold);
  if (error >= 0) {
    error -= length;
    ++minorSteps;
  }
  const std::int64_t majorAt = (steep ? from.y : from.x) + (major.forward ? first : -first);
  const std::int64_t minorAt =
      (steep ? from.x : from.y) + (minor.forward ? minorSteps : -minorSteps);
  const std::int64_t column = steep ? minorAt : majorAt, row = steep ? majorAt : minorAt;
  if (!Dashed() && y.length == 0) {
    return x.forward ? canvas.Span(row, column, column + (end - first), pixel_)
                     : canvas.Span(row, column - (end - first) + 1, column + 1, pixel_);
  }
  const std::ptrdiff_t xStep = x.forward ? 1 : -1;
  const std::ptrdiff_t yStep = y.forward ? canvas.Stride() : -canvas.Stride();
  const std::ptrdiff_t place = row * canvas.Stride() + column;
  const auto steps = Dashed() ? &Stroke::Steps<true> : &Stroke::Steps<false>;
  (this->*steps)(canvas, place, steep ? yStep : xStep, steep ? xStep : yStep, error,
                 static_cast<std::int64_t>(minor.length), length, end - first,
                 Dashed() ? (phase + static_cast<std::uint64_t>(first)) % period_ : 0);
}

}  // namespace gfx
