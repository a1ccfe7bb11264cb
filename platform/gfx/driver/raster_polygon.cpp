#include <algorithm>

#include "platform/gfx/driver/integer_math.h"
#include "platform/gfx/driver/raster_shapes.h"

namespace gfx {

void PolygonFill::AddEdge(const Canvas& canvas, POINT a, POINT b) {
  if (a.y > b.y) std::swap(a, b);
  const std::int64_t firstRow = std::max<std::int64_t>(a.y, canvas.Top());
  const std::int64_t endRow = std::min<std::int64_t>(b.y, canvas.Bottom());
  // Nothing to the right of the canvas changes what is inside within it.
  if (firstRow >= endRow || std::min(a.x, b.x) >= canvas.Right()) return;

  const std::int64_t dx = std::int64_t{b.x} - a.x, dy = std::int64_t{b.y} - a.y;
  // Both factors are below 2^32.
  const std::uint64_t product = static_cast<std::uint64_t>(firstRow - a.y) * Magnitude(dx);
  auto column = static_cast<std::int64_t>(product / static_cast<std::uint64_t>(dy));
  auto remainder = static_cast<std::int64_t>(product % static_cast<std::uint64_t>(dy));
  if (dx < 0) {
    column = -column;
    remainder = -remainder;
  } else if (remainder > 0) {
    ++column;
    remainder -= dy;
  }
  const std::int64_t stepColumn = FloorDiv(dx, dy);
  edges_.push_back(
      {firstRow, endRow, a.x + column, remainder, dy, stepColumn, dx - stepColumn * dy});
}

void PolygonFill::Fill(const Canvas& canvas, const POINT* corners, int count, std::uint32_t pixel) {
  if (canvas.Empty() || count < 3) return;
  edges_.clear();
  active_.clear();
  for (int i = 1; i < count; ++i) AddEdge(canvas, corners[i - 1], corners[i]);
  AddEdge(canvas, corners[count - 1], corners[0]);
  std::sort(edges_.begin(), edges_.end(),
            [](const Edge& a, const Edge& b) { return a.firstRow < b.firstRow; });

  auto next = edges_.cbegin();
  for (std::int64_t row = 0; next != edges_.cend() || !active_.empty(); ++row) {
    if (active_.empty()) row = next->firstRow;
    while (next != edges_.cend() && next->firstRow == row) active_.push_back(*next++);

    crossings_.clear();
    for (Edge& edge : active_) {
      crossings_.push_back(
          static_cast<LONG>(std::clamp(edge.column, canvas.Left(), canvas.Right())));
      edge.column += edge.stepColumn;
      edge.remainder += edge.stepRemainder;
      if (edge.remainder > 0) {
        edge.remainder -= edge.divisor;
        ++edge.column;
      }
    }
    std::erase_if(active_, [row](const Edge& edge) { return edge.endRow == row + 1; });

    // A dropped edge to the right may leave an odd number: the inside then reaches the border.
    if (crossings_.size() % 2 != 0) crossings_.push_back(static_cast<LONG>(canvas.Right()));
    std::sort(crossings_.begin(), crossings_.end());
    for (std::size_t i = 0; i + 1 < crossings_.size(); i += 2) {
      canvas.Span(row, crossings_[i], crossings_[i + 1], pixel);
    }
  }
}

}  // namespace gfx
