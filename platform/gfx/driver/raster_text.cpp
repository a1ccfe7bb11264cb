#include "platform/gfx/driver/raster_text.h"

#include <algorithm>

#include "platform/gfx/turn.h"

namespace gfx {
namespace {

std::uint32_t Blend(std::uint32_t under, std::uint32_t over, std::uint32_t coverage) {
  std::uint32_t pixel = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    const std::uint32_t mixed =
        (under >> shift & 0xFF) * (255 - coverage) + (over >> shift & 0xFF) * coverage;
    pixel |= (mixed + 127) / 255 << shift;
  }
  return pixel;
}

void BlendGlyph(const Canvas& canvas, const GlyphImage& glyph, std::uint32_t pixel) {
  const std::int64_t left = std::max<std::int64_t>(glyph.left, canvas.Left());
  const std::int64_t right =
      std::min<std::int64_t>(std::int64_t{glyph.left} + glyph.width, canvas.Right());
  const std::int64_t bottom =
      std::min<std::int64_t>(std::int64_t{glyph.top} + glyph.height, canvas.Bottom());
  for (std::int64_t y = std::max<std::int64_t>(glyph.top, canvas.Top()); y < bottom; ++y) {
    std::uint32_t* const row = canvas.Row(y);
    const BYTE* const coverage =
        glyph.coverage + static_cast<std::ptrdiff_t>(y - glyph.top) * glyph.stride;
    for (std::int64_t x = left; x < right; ++x) {
      const BYTE covered = coverage[x - glyph.left];
      if (covered == 255) {
        row[x] = pixel;
      } else if (covered != 0) {
        row[x] = Blend(row[x], pixel, covered);
      }
    }
  }
}

// A box in the line's own directions, counted from the baseline origin.
struct LineBox {
  std::int64_t first, top, end, bottom;
};

struct Corners {
  POINT at[4];
};

Corners TurnBox(POINT origin, const Turn& turn, const LineBox& box) {
  return {{MovePoint(origin, turn.Apply(box.first, box.top)),
           MovePoint(origin, turn.Apply(box.end, box.top)),
           MovePoint(origin, turn.Apply(box.end, box.bottom)),
           MovePoint(origin, turn.Apply(box.first, box.bottom))}};
}

bool Touches(const Canvas& canvas, const Corners& corners) {
  const auto [left, right] =
      std::minmax({corners.at[0].x, corners.at[1].x, corners.at[2].x, corners.at[3].x});
  const auto [top, bottom] =
      std::minmax({corners.at[0].y, corners.at[1].y, corners.at[2].y, corners.at[3].y});
  return left < canvas.Right() && right > canvas.Left() && top < canvas.Bottom() &&
         bottom > canvas.Top();
}

}  // namespace

void DrawTextRun(const Canvas& canvas, TextEngine& text, const TextRun& run, PolygonFill& polygon) {
  if (canvas.Empty() || run.text.empty()) return;
  const TEXTMETRICA metrics = text.Metrics(run.font);
  const SIZE extent = text.Extent(run.font, run.text);
  const Turn turn(run.font.logical.lfEscapement);
  const POINT origin = BaselineOrigin(run, extent, metrics.tmAscent);
  const auto fill = [&](const LineBox& box, COLORREF color) {
    // Corners at multiples of 90 degrees make just the box's pixels: its edges are pixel borders.
    polygon.Fill(canvas, TurnBox(origin, turn, box).at, 4, PixelOf(color));
  };

  const LineBox cell{0, -metrics.tmAscent, extent.cx, extent.cy - metrics.tmAscent};
  // Glyphs may reach out of their cells, by less than a height and a half.
  const std::int64_t reach = extent.cy + extent.cy / 2;
  const Corners around = TurnBox(
      origin, turn, {cell.first - reach, cell.top - reach, cell.end + reach, cell.bottom + reach});
  if (!Touches(canvas, around)) return;
  if (run.bkMode == OPAQUE) fill(cell, run.bkColor);
  const RECT visible{static_cast<LONG>(canvas.Left()), static_cast<LONG>(canvas.Top()),
                     static_cast<LONG>(canvas.Right()), static_cast<LONG>(canvas.Bottom())};
  text.RenderVisible(run.font, run.text, origin, visible, [&](const GlyphImage& glyph) {
    BlendGlyph(canvas, glyph, PixelOf(run.color));
  });

  const std::int64_t thickness = std::max<LONG>(1, metrics.tmHeight / 16);
  const std::int64_t strike = -std::int64_t{metrics.tmAscent} * 3 / 10;
  if (run.font.logical.lfUnderline) fill({0, thickness, extent.cx, 2 * thickness}, run.color);
  if (run.font.logical.lfStrikeOut) fill({0, strike, extent.cx, strike + thickness}, run.color);
}

}  // namespace gfx
