#include "platform/gfx/driver/raster.h"

#include <algorithm>

#include "platform/gfx/driver/canvas.h"
#include "platform/gfx/driver/raster_images.h"
#include "platform/gfx/driver/raster_lines.h"
#include "platform/gfx/driver/raster_shapes.h"
#include "platform/gfx/driver/raster_text.h"
#include "platform/gfx/text_engine.h"

namespace gfx {
namespace {

class RasterDriver : public Driver {
 public:
  RasterDriver(Surface& surface, TextEngine& text) : surface_(surface), text_(text) {}

  SIZE Extent() const override { return {surface_.Width(), surface_.Height()}; }
  TextEngine& Text() override { return text_; }
  const Surface* Pixels() const override { return &surface_; }

  void Line(POINT from, POINT to, const Pen& pen, Clip clip) override {
    const POINT points[] = {from, to};
    Polyline(points, 2, pen, clip);
  }
  void Polyline(const POINT* points, int count, const Pen& pen, Clip clip) override {
    Stroke(pen).Polyline(Canvas(surface_, clip), points, count, false);
  }
  void Polygon(const POINT* points, int count, const Pen& pen, const Brush& brush,
               Clip clip) override {
    const Canvas canvas(surface_, clip);
    if (!brush.hollow) polygon_.Fill(canvas, points, count, PixelOf(brush.color));
    Stroke(pen).Polyline(canvas, points, count, true);
  }
  void Rectangle(const RECT& box, const Pen& pen, const Brush& brush, Clip clip) override;
  void Ellipse(const RECT& box, const Pen& pen, const Brush& brush, Clip clip) override;
  void Fill(const RECT& box, const Brush& brush, Clip clip) override {
    if (brush.hollow) return;
    Canvas(surface_, clip).Box(box.left, box.top, box.right, box.bottom, PixelOf(brush.color));
  }
  void TextOut(const TextRun& run, Clip clip) override {
    DrawTextRun(Canvas(surface_, clip), text_, run, polygon_);
  }

  void Dib(POINT at, const ImageView& image, Clip clip) override {
    const Canvas canvas(surface_, clip);
    // Columns and rows beyond the 32-bit range cannot be on a surface.
    const auto end = [](std::int64_t start, int extent) {
      return static_cast<LONG>(std::min<std::int64_t>(start + extent, INT32_MAX));
    };
    const RECT to{at.x, at.y, end(at.x, image.width), end(at.y, image.height)};
    StretchImage(canvas, to, image, {0, 0, to.right - to.left, to.bottom - to.top});
  }
  void Stretch(const RECT& to, const ImageView& image, const RECT& from, Clip clip) override {
    StretchImage(Canvas(surface_, clip), to, image, from);
  }
  void Blit(const RECT& to, const Surface* source, POINT from, Clip clip) override {
    if (source) CopyPixels(Canvas(surface_, clip), to, *source, from);
  }

 private:
  Surface& surface_;
  TextEngine& text_;
  PolygonFill polygon_;
};

bool IsEmpty(const RECT& box) { return box.left >= box.right || box.top >= box.bottom; }

// The box whose outermost pixels the middle of the pen follows.
Bounds PenPath(const RECT& box, const Pen& pen, int width) {
  const std::int64_t before = pen.style == PS_INSIDEFRAME ? width / 2 : 0;
  const std::int64_t after = pen.style == PS_INSIDEFRAME ? (width - 1) / 2 : 0;
  return {box.left + before, box.top + before, box.right - after, box.bottom - after};
}

}  // namespace

void RasterDriver::Rectangle(const RECT& box, const Pen& pen, const Brush& brush, Clip clip) {
  if (IsEmpty(box)) return;
  Fill(box, brush, clip);
  gfx::Stroke stroke(pen);
  if (stroke.Invisible()) return;
  const Canvas canvas(surface_, clip);
  const Bounds path = PenPath(box, pen, stroke.Width());
  // A pen wider than the box meets itself in the middle.
  const auto left = static_cast<LONG>(std::min(path.left, path.right - 1));
  const auto top = static_cast<LONG>(std::min(path.top, path.bottom - 1));
  const auto right = static_cast<LONG>(std::max(path.left, path.right - 1));
  const auto bottom = static_cast<LONG>(std::max(path.top, path.bottom - 1));
  const POINT corners[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
  if (left == right && top == bottom && !stroke.Wide()) {
    canvas.Box(left, top, std::int64_t{left} + 1, std::int64_t{top} + 1, stroke.Pixel());
  } else {
    stroke.Polyline(canvas, corners, 4, true);
  }
}

void RasterDriver::Ellipse(const RECT& box, const Pen& pen, const Brush& brush, Clip clip) {
  if (IsEmpty(box)) return;
  const Canvas canvas(surface_, clip);
  if (!brush.hollow) {
    FillEllipse(canvas, {box.left, box.top, box.right, box.bottom}, PixelOf(brush.color));
  }
  const gfx::Stroke stroke(pen);
  if (stroke.Invisible()) return;
  const Bounds path = PenPath(box, pen, stroke.Width());
  if (!stroke.Wide()) return OutlineEllipse(canvas, path, stroke);
  const std::int64_t before = stroke.Width() / 2, after = (stroke.Width() - 1) / 2;
  FillRing(canvas, {path.left - before, path.top - before, path.right + after, path.bottom + after},
           {path.left + after + 1, path.top + after + 1, path.right - 1 - before,
            path.bottom - 1 - before},
           stroke.Pixel());
}

std::unique_ptr<Driver> MakeRasterDriver(Surface& surface, TextEngine& text) {
  return std::make_unique<RasterDriver>(surface, text);
}

}  // namespace gfx
