// Random drawing calls: anything a driver can be asked for, mostly near a small picture.
#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "platform/gfx/driver.h"

// Evenly distributed integers; the same sequence with every standard library.
class Seeded {
 public:
  explicit Seeded(unsigned seed) : engine_(seed) {}
  LONG operator()(std::int64_t low, std::int64_t high) {
    return static_cast<LONG>(
        low + static_cast<std::int64_t>(engine_() % static_cast<std::uint64_t>(high - low + 1)));
  }
  POINT Point(LONG low, LONG high) {
    const LONG x = (*this)(low, high);
    return {x, (*this)(low, high)};
  }

 private:
  std::mt19937_64 engine_;
};

class RandomShapes {
 public:
  explicit RandomShapes(unsigned seed) : any_(seed), image_(64 * 64 * 4) {
    for (BYTE& byte : image_) byte = static_cast<BYTE>(any_(0, 255));
  }
  // Mostly near the picture, at times anywhere in the 32-bit range.
  LONG Place() {
    const LONG kind = any_(0, 19);
    if (kind == 0) return any_(INT32_MIN, INT32_MAX);
    return kind < 4 ? any_(-20000, 20000) : any_(-40, 260);
  }
  POINT Point() {
    const LONG x = Place();
    return {x, Place()};
  }
  RECT Box() {
    const POINT a = Point(), b = Point();
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
  }
  // `own` is the driver's surface, as the source of copies.
  void Draw(gfx::Driver& driver, const gfx::Surface* own, gfx::Clip clip);

 private:
  COLORREF Color() { return static_cast<COLORREF>(any_(0, 0xFFFFFF)); }
  gfx::Pen Pen() {
    const LONG style = any_(PS_SOLID, PS_INSIDEFRAME), kind = any_(0, 9);
    const LONG width = kind == 0 ? any_(0, 2000000000) : kind < 5 ? any_(2, 15) : any_(0, 1);
    const COLORREF color = Color();
    return {style, width, color, any_(TRANSPARENT, OPAQUE), Color()};
  }
  gfx::Brush Brush() {
    const bool hollow = any_(0, 3) == 0;
    return {hollow, Color()};
  }
  void DrawText(gfx::Driver& driver, gfx::Clip clip);

  Seeded any_;
  std::vector<BYTE> image_;
};

// Arguments are drawn in statements of their own: their order in a call is not fixed.
inline void RandomShapes::Draw(gfx::Driver& driver, const gfx::Surface* own, gfx::Clip clip) {
  const LONG kind = any_(0, 9);
  const RECT box = Box();
  const gfx::Pen pen = Pen();
  const gfx::Brush brush = Brush();
  std::vector<POINT> points(static_cast<std::size_t>(any_(2, 30)));
  for (POINT& point : points) point = Point();
  const int count = static_cast<int>(points.size());
  const int bytes = any_(3, 4);
  const gfx::ImageView image{image_.data(), 64 * bytes, 64, 64, bytes};
  const LONG left = any_(0, 63), top = any_(0, 63);
  const RECT part{left, top, any_(left + 1, 64), 64};
  switch (kind) {
    case 0:
      return driver.Line(points[0], points[1], pen, clip);
    case 1:
    case 2:
      return driver.Polyline(points.data(), count, pen, clip);
    case 3:
      return driver.Polygon(points.data(), count, pen, brush, clip);
    case 4:
      return driver.Rectangle(box, pen, brush, clip);
    case 5:
      return driver.Ellipse(box, pen, brush, clip);
    case 6:
      return driver.Stretch(box, image, part, clip);
    case 7:
      return driver.Dib(points[0], image, clip);
    case 8:
      return driver.Blit(box, own, points[0], clip);
    default:
      return DrawText(driver, clip);
  }
}

inline void RandomShapes::DrawText(gfx::Driver& driver, gfx::Clip clip) {
  gfx::Font font{};
  font.height = any_(-40, 60);
  font.width = any_(0, 2) == 0 ? any_(-20, 20) : 0;
  font.logical.lfEscapement = any_(0, 1) == 0 ? 900 * any_(0, 3) : any_(-4000, 4000);
  font.logical.lfWeight = 100 * any_(0, 9);
  font.logical.lfUnderline = static_cast<BYTE>(any_(0, 1));
  font.logical.lfStrikeOut = static_cast<BYTE>(any_(0, 1));
  std::string text(static_cast<std::size_t>(any_(1, 25)), ' ');
  for (char& letter : text) letter = static_cast<char>(any_(1, 255));
  const UINT aligns[] = {TA_LEFT, TA_RIGHT, TA_CENTER, TA_BOTTOM, TA_BASELINE | TA_CENTER};
  const UINT align = aligns[any_(0, 4)];
  const COLORREF ink = Color(), back = Color();
  const int mode = any_(TRANSPARENT, OPAQUE);
  driver.TextOut({Point(), text, font, ink, align, mode, back}, clip);
}
