#include <algorithm>

#include "platform/gfx/driver/integer_math.h"
#include "platform/gfx/driver/raster_lines.h"

// The disc swept along one segment, row by row. Positions are doubled and counted from the first
// end, with x growing toward the second one: a pixel centre (2x + xShift, 2y + yShift) belongs to
// the strip where |cross product with the direction| ≤ strip, and to the part between the ends
// where its dot product with the direction lies between the ends' own.
namespace gfx {
namespace {

struct Interval {
  std::int64_t first, last;  // both included; empty where first > last
};

constexpr Interval kNothing{INT64_MAX, INT64_MIN};

void Unite(Interval& into, const Interval& other) {
  if (other.first > other.last) return;
  into.first = std::min(into.first, other.first);
  into.last = std::max(into.last, other.last);
}

// floor((2 × row × rise + offset) / (2 × run)) for rows in turn, by exact remainders.
class RowFloor {
 public:
  // rise, run < 2^32 and positive, |row| × rise < 2^64, |offset| < 2^62.
  RowFloor(std::int64_t row, std::uint64_t rise, std::uint64_t run, std::int64_t offset)
      : divisor_(static_cast<std::int64_t>(run) * 2),
        stepQuotient_(static_cast<std::int64_t>(rise / run)),
        stepRemainder_(static_cast<std::int64_t>(rise % run) * 2) {
    const std::uint64_t product = Magnitude(row) * rise;
    auto quotient = static_cast<std::int64_t>(product / run);
    auto remainder = static_cast<std::int64_t>(product % run);
    if (row < 0) {
      quotient = -quotient - (remainder != 0 ? 1 : 0);
      remainder = remainder != 0 ? static_cast<std::int64_t>(run) - remainder : 0;
    }
    const std::int64_t rest = 2 * remainder + offset;
    const std::int64_t more = FloorDiv(rest, divisor_);
    quotient_ = quotient + more;
    remainder_ = rest - more * divisor_;
  }
  std::int64_t Value() const { return quotient_; }
  void NextRow() {
    quotient_ += stepQuotient_;
    remainder_ += stepRemainder_;
    if (remainder_ >= divisor_) {
      remainder_ -= divisor_;
      ++quotient_;
    }
  }

 private:
  std::int64_t divisor_, stepQuotient_, stepRemainder_;
  std::int64_t quotient_ = 0, remainder_ = 0;
};

// The doubled position `low` … `high` as pixels.
Interval Pixels(std::int64_t low, std::int64_t high) {
  return {CeilDiv(low, 2), FloorDiv(high, 2)};
}

}  // namespace

std::int64_t Stroke::DiscHalf(std::int64_t row) const {
  if (width_ <= kDiscTable) return disc_[static_cast<std::size_t>(row)];
  return static_cast<std::int64_t>(
      IntegerRoot(static_cast<std::uint64_t>(width_) * static_cast<std::uint64_t>(width_) -
                  static_cast<std::uint64_t>(row * row)));
}

void Stroke::Capsule(const Canvas& canvas, POINT from, POINT to) const {
  if (to.y < from.y) std::swap(from, to);
  const std::int64_t before = width_ / 2, after = (width_ - 1) / 2;
  const std::int64_t firstRow = std::max(from.y - before, canvas.Top());
  const std::int64_t lastRow = std::min(to.y + after, canvas.Bottom() - 1);
  if (std::min(from.x, to.x) - before >= canvas.Right() ||
      std::max(from.x, to.x) + after < canvas.Left() || firstRow > lastRow) {
    return;
  }

  const bool mirrored = to.x < from.x;
  const std::int64_t run = std::int64_t{to.x} - from.x, dx = mirrored ? -run : run;
  const std::int64_t dy = std::int64_t{to.y} - from.y;
  const std::int64_t yShift = width_ % 2 == 0 ? 1 : 0, xShift = mirrored ? -yShift : yShift;
  const bool slanted = dx != 0 && dy != 0;
  const auto w = static_cast<std::uint64_t>(width_);
  const auto strip =
      static_cast<std::int64_t>(slanted ? IntegerHypotenuse(w * static_cast<std::uint64_t>(dx),
                                                            w * static_cast<std::uint64_t>(dy))
                                        : 0);
  const auto rise = static_cast<std::uint64_t>(slanted ? dx : 1);
  const auto rows = static_cast<std::uint64_t>(slanted ? dy : 1);
  const std::int64_t offset = yShift * dx - xShift * dy;
  const std::int64_t start = firstRow - from.y;
  RowFloor right(start, rise, rows, offset + strip);
  // The first pixel at or right of the strip's left edge is one after the last one left of it.
  RowFloor left(start, rise, rows, offset - strip - 1);

  // Last pixel of row `y` (counted from an end) that is not past that end's perpendicular.
  const auto behind = [&](std::int64_t y) {
    return FloorDiv(-((2 * y + yShift) * dy + xShift * dx), 2 * dx);
  };
  for (std::int64_t row = firstRow; row <= lastRow; ++row) {
    const std::int64_t y = row - from.y, yEnd = row - to.y;
    const std::int64_t doubled = 2 * y + yShift, doubledEnd = 2 * yEnd + yShift;
    Interval span = kNothing;
    if (doubled <= width_) {
      const std::int64_t half = DiscHalf(doubled < 0 ? -doubled : doubled);
      Unite(span, Pixels(-half - xShift, half - xShift));
    }
    if (doubledEnd >= -width_) {
      const std::int64_t half = DiscHalf(doubledEnd < 0 ? -doubledEnd : doubledEnd);
      const Interval disc = Pixels(-half - xShift, half - xShift);
      Unite(span, {disc.first + dx, disc.last + dx});
    }
    if (slanted) {
      Interval body{left.Value() + 1, right.Value()};
      // Farther than the radius from an end's row, the strip has long passed its perpendicular.
      if (doubled <= width_) {
        body.first = std::max(body.first, CeilDiv(-((2 * y + yShift) * dy + xShift * dx), 2 * dx));
      }
      if (doubledEnd >= -width_) body.last = std::min(body.last, dx + behind(yEnd));
      Unite(span, body);
      left.NextRow();
      right.NextRow();
    } else if (dx == 0 && doubled >= 0 && doubledEnd <= 0) {
      Unite(span, Pixels(-width_ - xShift, width_ - xShift));
    }
    if (span.first > span.last) continue;
    if (mirrored) span = {-span.last, -span.first};
    canvas.Span(row, from.x + span.first, from.x + span.last + 1, pixel_);
  }
}

}  // namespace gfx
