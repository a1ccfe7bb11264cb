// Draws seeded random scenes with the raster driver and the built-in font and prints one hash of
// all their pixels. Built by scripts/same_pixels with several compilers, straight from the sources.
#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "platform/gfx/driver/raster.h"
#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"

namespace {

constexpr int kScenes = 60, kShapes = 150;
constexpr int kWidth = 240, kHeight = 180;

class Scene {
 public:
  explicit Scene(unsigned seed)
      : random_(seed),
        surface_(kWidth, kHeight),
        driver_(gfx::MakeRasterDriver(surface_, gfx::BuiltinText())),
        image_(64 * 64 * 4) {
    for (BYTE& byte : image_) byte = static_cast<BYTE>(Any(0, 255));
  }

  std::uint64_t Draw() {
    for (int i = 0; i < kShapes; ++i) DrawShape();
    return surface_.Hash();
  }

 private:
  LONG Any(std::int64_t low, std::int64_t high) {
    return static_cast<LONG>(
        low + static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(high - low + 1)));
  }
  // Mostly near the picture, at times anywhere in the 32-bit range.
  LONG Place() {
    const LONG kind = Any(0, 19);
    if (kind == 0) return Any(INT32_MIN, INT32_MAX);
    return kind < 4 ? Any(-20000, 20000) : Any(-40, 260);
  }
  POINT Point() {
    const LONG x = Place();
    return {x, Place()};
  }
  RECT Box() {
    const POINT a = Point(), b = Point();
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
  }
  COLORREF Color() { return static_cast<COLORREF>(Any(0, 0xFFFFFF)); }
  gfx::Pen Pen() {
    const LONG style = Any(PS_SOLID, PS_INSIDEFRAME), kind = Any(0, 9);
    const LONG width = kind == 0 ? Any(0, 2000000000) : kind < 5 ? Any(2, 15) : Any(0, 1);
    return {style, width, Color()};
  }
  gfx::Brush Brush() {
    const bool hollow = Any(0, 3) == 0;
    return {hollow, Color()};
  }
  void DrawShape();
  void DrawText(gfx::Clip clip);

  std::mt19937_64 random_;
  gfx::Surface surface_;
  std::unique_ptr<gfx::Driver> driver_;
  std::vector<BYTE> image_;
};

// Arguments are drawn in statements of their own: their order in a call is not fixed.
void Scene::DrawShape() {
  const LONG kind = Any(0, 9);
  const bool clipped = Any(0, 2) == 0;
  const RECT box = Box(), area = Box();
  const gfx::Clip clip = clipped ? &area : nullptr;
  const gfx::Pen pen = Pen();
  const gfx::Brush brush = Brush();
  std::vector<POINT> points(static_cast<std::size_t>(Any(2, 30)));
  for (POINT& point : points) point = Point();
  const int count = static_cast<int>(points.size());
  const int bytes = Any(3, 4);
  const gfx::ImageView image{image_.data(), 64 * bytes, 64, 64, bytes};
  const LONG left = Any(0, 63), top = Any(0, 63);
  const RECT part{left, top, Any(left + 1, 64), 64};
  switch (kind) {
    case 0:
      return driver_->Line(points[0], points[1], pen, clip);
    case 1:
    case 2:
      return driver_->Polyline(points.data(), count, pen, clip);
    case 3:
      return driver_->Polygon(points.data(), count, pen, brush, clip);
    case 4:
      return driver_->Rectangle(box, pen, brush, clip);
    case 5:
      return driver_->Ellipse(box, pen, brush, clip);
    case 6:
      return driver_->Stretch(box, image, part, clip);
    case 7:
      return driver_->Dib(points[0], image, clip);
    case 8:
      return driver_->Blit(box, &surface_, points[0], clip);
    default:
      return DrawText(clip);
  }
}

void Scene::DrawText(gfx::Clip clip) {
  gfx::Font font{};
  font.height = Any(-40, 60);
  font.width = Any(0, 2) == 0 ? Any(-20, 20) : 0;
  font.logical.lfEscapement = Any(0, 1) == 0 ? 900 * Any(0, 3) : Any(-4000, 4000);
  font.logical.lfWeight = 100 * Any(0, 9);
  font.logical.lfUnderline = static_cast<BYTE>(Any(0, 1));
  font.logical.lfStrikeOut = static_cast<BYTE>(Any(0, 1));
  std::string text(static_cast<std::size_t>(Any(1, 25)), ' ');
  for (char& letter : text) letter = static_cast<char>(Any(1, 255));
  const UINT aligns[] = {TA_LEFT, TA_RIGHT, TA_CENTER, TA_BOTTOM, TA_BASELINE | TA_CENTER};
  const UINT align = aligns[Any(0, 4)];
  const COLORREF ink = Color(), back = Color();
  const int mode = Any(TRANSPARENT, OPAQUE);
  driver_->TextOut({Point(), text, font, ink, align, mode, back}, clip);
}

}  // namespace

int main() {
  std::uint64_t all = 0xCBF29CE484222325u;
  for (unsigned seed = 0; seed < kScenes; ++seed) {
    all = (all ^ Scene(seed).Draw()) * 0x100000001B3u;
  }
  std::printf("%016" PRIx64 "\n", all);
}
