#include <algorithm>
#include <vector>

#include "platform/gfx/builtin_glyphs.h"
#include "platform/gfx/driver/integer_math.h"
#include "platform/gfx/text_engine.h"
#include "platform/gfx/turn.h"

namespace gfx {
namespace {

// Pixels per column and row of the drawn glyphs.
struct Magnification {
  int columns, rows;
};

constexpr int kMaxMagnification = 128;
constexpr int kEmRows = 10;  // what a negative lfHeight speaks of

Magnification MagnificationOf(const Font& font) {
  const auto whole = [](LONG extent, int unit) {
    const std::int64_t times = static_cast<std::int64_t>(Magnitude(extent)) / unit;
    return static_cast<int>(std::clamp<std::int64_t>(times, 1, kMaxMagnification));
  };
  const int rows = whole(font.height, font.height < 0 ? kEmRows : kGlyphRows);
  return {font.width == 0 ? rows : whole(font.width, kGlyphColumns), rows};
}

// One character's cell at the baseline position `start` of an unturned line.
class Cell {
 public:
  Cell(char32_t code, Magnification scale, bool bold, std::int64_t start)
      : bits_(BuiltinGlyph(code)),
        scale_(scale),
        smear_(bold ? (scale.columns + 1) / 2 : 0),
        start_(start) {}

  // Is the pixel of the magnified glyph black? A bold glyph reaches half a column farther right.
  bool Black(std::int64_t along, std::int64_t down) const {
    const std::int64_t fromLeft = along - start_, fromTop = down + kGlyphAscent * scale_.rows;
    if (fromLeft < 0 || fromLeft >= kGlyphColumns * scale_.columns) return false;
    if (fromTop < 0 || fromTop >= kGlyphRows * scale_.rows) return false;
    const auto column = static_cast<int>(fromLeft), row = static_cast<int>(fromTop);
    const unsigned bits = bits_[static_cast<std::size_t>(row / scale_.rows)];
    if ((bits >> column / scale_.columns & 1) != 0) return true;
    return column >= smear_ && (bits >> (column - smear_) / scale_.columns & 1) != 0;
  }

 private:
  const GlyphBits& bits_;
  Magnification scale_;
  int smear_;
  std::int64_t start_;
};

// At multiples of 90 degrees every device pixel shows just one of the glyph. At other angles its
// coverage is the share of 4 × 4 places in it that lie on black.
constexpr int kSamplesShift = 2;

class BuiltinEngine : public TextEngine {
 public:
  SIZE Extent(const Font& font, std::string_view text) override {
    const Magnification scale = MagnificationOf(font);
    const std::int64_t width =
        static_cast<std::int64_t>(DecodeText(text).size()) * kGlyphColumns * scale.columns;
    return {static_cast<LONG>(std::min<std::int64_t>(width, INT32_MAX)), kGlyphRows * scale.rows};
  }

  TEXTMETRICA Metrics(const Font& font) override {
    const Magnification scale = MagnificationOf(font);
    TEXTMETRICA metrics{};
    metrics.tmHeight = kGlyphRows * scale.rows;
    metrics.tmAscent = kGlyphAscent * scale.rows;
    metrics.tmDescent = metrics.tmHeight - metrics.tmAscent;
    metrics.tmInternalLeading = (kGlyphRows - kEmRows) * scale.rows;
    metrics.tmAveCharWidth = metrics.tmMaxCharWidth = kGlyphColumns * scale.columns;
    metrics.tmWeight = font.logical.lfWeight >= kBold ? FW_BOLD : FW_NORMAL;
    metrics.tmDigitizedAspectX = metrics.tmDigitizedAspectY = 96;
    metrics.tmFirstChar = 0x20;
    metrics.tmLastChar = 0xFF;
    metrics.tmDefaultChar = 0x7F;
    metrics.tmBreakChar = ' ';
    metrics.tmUnderlined = font.logical.lfUnderline;
    metrics.tmStruckOut = font.logical.lfStrikeOut;
    metrics.tmPitchAndFamily = 0x30;  // fixed pitch, modern
    metrics.tmCharSet = font.logical.lfCharSet;
    return metrics;
  }

  void Render(const Font& font, std::string_view text, POINT origin,
              const GlyphSink& sink) override {
    RenderVisible(font, text, origin, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, sink);
  }
  void RenderVisible(const Font& font, std::string_view text, POINT origin, const RECT& visible,
                     const GlyphSink& sink) override {
    const Magnification scale = MagnificationOf(font);
    const Turn turn(font.logical.lfEscapement);
    const bool bold = font.logical.lfWeight >= kBold;
    std::int64_t start = 0;
    for (char32_t code : DecodeText(text)) {
      RenderCell(Cell(code, scale, bold, start), scale, start, turn, origin, visible, sink);
      start += kGlyphColumns * scale.columns;
    }
  }

 private:
  static constexpr LONG kBold = 600;

  void RenderCell(const Cell& cell, Magnification scale, std::int64_t start, const Turn& turn,
                  POINT origin, const RECT& visible, const GlyphSink& sink);

  std::vector<BYTE> coverage_;
};

// Coverage of the device pixel right of and below the offset x, y from the origin, by 4^shift
// places.
BYTE Coverage(const Cell& cell, const Turn& turn, int shift, std::int64_t x, std::int64_t y) {
  // Positions count 1 / (2 × samples) pixels; products carry 30 more bits, which the right shift
  // rounds down.
  const int samples = 1 << shift, scale = shift + 1 + 30;
  const std::int64_t firstX = x * 2 * samples + 1, firstY = y * 2 * samples + 1;
  int black = 0;
  for (int row = 0; row < samples; ++row) {
    const std::int64_t sampleY = firstY + 2 * row;
    for (int column = 0; column < samples; ++column) {
      const std::int64_t sampleX = firstX + 2 * column;
      const std::int64_t along = sampleX * turn.Cosine() - sampleY * turn.Sine();
      const std::int64_t down = sampleX * turn.Sine() + sampleY * turn.Cosine();
      black += cell.Black(along >> scale, down >> scale) ? 1 : 0;
    }
  }
  return static_cast<BYTE>(black * 255 >> 2 * shift);
}

void BuiltinEngine::RenderCell(const Cell& cell, Magnification scale, std::int64_t start,
                               const Turn& turn, POINT origin, const RECT& visible,
                               const GlyphSink& sink) {
  const std::int64_t end = start + kGlyphColumns * scale.columns;
  const std::int64_t top = -kGlyphAscent * scale.rows, bottom = top + kGlyphRows * scale.rows;
  const Offset corners[] = {turn.Apply(start, top), turn.Apply(end, top), turn.Apply(end, bottom),
                            turn.Apply(start, bottom)};
  const auto byX = [](const Offset& a, const Offset& b) { return a.x < b.x; };
  const auto byY = [](const Offset& a, const Offset& b) { return a.y < b.y; };
  const bool exact = turn.Quarters() >= 0;
  const std::int64_t margin = exact ? 0 : 1;  // corners are rounded
  const auto [left, right] = std::minmax_element(corners, corners + 4, byX);
  const auto [upper, lower] = std::minmax_element(corners, corners + 4, byY);
  // Offsets from the origin. Products in Coverage stay below 2^63, and nothing so far from its
  // text's origin is on a surface.
  constexpr std::int64_t kFar = std::int64_t{1} << 28;
  const auto low = [&](std::int64_t edge, std::int64_t from, LONG shown) {
    return std::max({edge - margin, shown - from, -kFar});
  };
  const auto high = [&](std::int64_t edge, std::int64_t from, LONG shown) {
    return std::min({edge + margin, shown - from, kFar});
  };
  const std::int64_t x0 = low(left->x, origin.x, visible.left);
  const std::int64_t y0 = low(upper->y, origin.y, visible.top);
  const std::int64_t width = high(right->x, origin.x, visible.right) - x0;
  const std::int64_t height = high(lower->y, origin.y, visible.bottom) - y0;
  if (width <= 0 || height <= 0) return;

  coverage_.assign(static_cast<std::size_t>(width * height), 0);
  for (std::int64_t y = 0; y < height; ++y) {
    for (std::int64_t x = 0; x < width; ++x) {
      coverage_[static_cast<std::size_t>(y * width + x)] =
          Coverage(cell, turn, exact ? 0 : kSamplesShift, x0 + x, y0 + y);
    }
  }
  sink({static_cast<int>(origin.x + x0), static_cast<int>(origin.y + y0), static_cast<int>(width),
        static_cast<int>(height), coverage_.data(), static_cast<int>(width)});
}

}  // namespace

TextEngine& BuiltinText() {
  static BuiltinEngine engine;
  return engine;
}

}  // namespace gfx
