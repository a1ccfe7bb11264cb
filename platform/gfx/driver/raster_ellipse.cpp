#include <algorithm>

#include "platform/gfx/driver/integer_math.h"
#include "platform/gfx/driver/raster_shapes.h"

// With doubled positions X, Y from the middle of a w × h box, a pixel centre lies inside where
// X² h² + Y² w² ≤ w² h². X has the parity of w + 1, Y that of h + 1.
namespace gfx {
namespace {

constexpr std::int64_t kMaxExtent = UINT32_MAX;  // whose square still fits 64 bits

struct Columns {
  std::int64_t first, end;  // end excluded; empty where first ≥ end
};

// The columns of an ellipse's area in each row.
class EllipseRows {
 public:
  explicit EllipseRows(Bounds box) : box_(box) {
    Limit(box_.left, box_.right);
    Limit(box_.top, box_.bottom);
    width_ = std::max<std::int64_t>(box_.right - box_.left, 0);
    height_ = std::max<std::int64_t>(box_.bottom - box_.top, 0);
  }

  const Bounds& Box() const { return box_; }
  // Doubled distance from the middle column.
  std::int64_t ColumnDistance(std::int64_t x) const {
    const std::int64_t doubled = 2 * x + 1 - (box_.left + box_.right);
    return doubled < 0 ? -doubled : doubled;
  }
  // Empty outside of the box.
  Columns At(std::int64_t row) const {
    if (width_ == 0 || row < box_.top || row >= box_.bottom) return {0, 0};
    const std::int64_t y = 2 * row + 1 - (box_.top + box_.bottom);
    if (y >= -1 && y <= 1) return {box_.left, box_.right};
    const auto w = static_cast<std::uint64_t>(width_), h = static_cast<std::uint64_t>(height_);
    const std::uint64_t ySquare = Magnitude(y) * Magnitude(y);
    auto half =
        static_cast<std::int64_t>(IntegerRoot(MultiplyDivide(w * w, h * h - ySquare, h * h)));
    if ((half ^ width_) % 2 == 0) --half;
    half = std::max<std::int64_t>(half, width_ % 2 == 0 ? 1 : 0);
    const std::int64_t middle = box_.left + box_.right;
    return {(middle - 1 - half) / 2, (middle + 1 + half) / 2};  // both without remainder
  }

 private:
  static void Limit(std::int64_t& low, std::int64_t& high) {
    const std::int64_t excess = high - low - kMaxExtent;
    if (excess <= 0) return;
    low += excess / 2;
    high -= excess - excess / 2;
  }

  Bounds box_;
  std::int64_t width_, height_;
};

// Visits the rows of `box` on the canvas.
template <class Visit>
void ForRows(const Canvas& canvas, const Bounds& box, Visit visit) {
  if (canvas.Empty() || box.left >= canvas.Right() || box.right <= canvas.Left()) return;
  const std::int64_t end = std::min(box.bottom, canvas.Bottom());
  for (std::int64_t row = std::max(box.top, canvas.Top()); row < end; ++row) visit(row);
}

}  // namespace

void FillEllipse(const Canvas& canvas, const Bounds& box, std::uint32_t pixel) {
  const EllipseRows rows(box);
  ForRows(canvas, rows.Box(), [&](std::int64_t row) {
    const Columns columns = rows.At(row);
    canvas.Span(row, columns.first, columns.end, pixel);
  });
}

void FillRing(const Canvas& canvas, const Bounds& outer, const Bounds& inner, std::uint32_t pixel) {
  const EllipseRows rows(outer), hole(inner);
  ForRows(canvas, rows.Box(), [&](std::int64_t row) {
    const Columns columns = rows.At(row), without = hole.At(row);
    if (without.first >= without.end) {
      canvas.Span(row, columns.first, columns.end, pixel);
    } else {
      canvas.Span(row, columns.first, without.first, pixel);
      canvas.Span(row, without.end, columns.end, pixel);
    }
  });
}

void OutlineEllipse(const Canvas& canvas, const Bounds& box, const Stroke& stroke) {
  const EllipseRows rows(box);
  const auto run = [&](std::int64_t row, std::int64_t depth, std::int64_t first, std::int64_t end) {
    if (!stroke.Dashed()) return canvas.Span(row, first, end, stroke.Pixel());
    end = std::min(end, canvas.Right());
    for (std::int64_t x = std::max(first, canvas.Left()); x < end; ++x) {
      stroke.Paint(canvas.Row(row)[x],
                   static_cast<std::uint64_t>(rows.ColumnDistance(x) / 2 + depth));
    }
  };
  ForRows(canvas, rows.Box(), [&](std::int64_t row) {
    const std::int64_t fromTop = row - rows.Box().top, fromBottom = rows.Box().bottom - 1 - row;
    const std::int64_t depth = std::min(fromTop, fromBottom);
    const Columns columns = rows.At(row);
    const Columns outward = rows.At(fromTop < fromBottom ? row - 1 : row + 1);
    if (outward.first >= outward.end) return run(row, depth, columns.first, columns.end);
    run(row, depth, columns.first, std::max(columns.first + 1, outward.first));
    run(row, depth, std::min(columns.end - 1, outward.end), columns.end);
  });
}

}  // namespace gfx
