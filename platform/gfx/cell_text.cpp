#include <cstdlib>

#include "platform/gfx/mapping.h"
#include "platform/gfx/text_engine.h"

namespace gfx {
namespace {

std::int64_t Magnitude(LONG length) { return std::llabs(std::int64_t{length}); }

class Cells final : public TextEngine {
 public:
  SIZE Extent(const Font& font, std::string_view text) override {
    // A text's length is an int and a width at most 2^31: the product fits.
    const auto bytes = static_cast<std::int64_t>(text.size());
    return {Saturate(bytes * Width(font)), Saturate(Magnitude(font.logical.lfHeight))};
  }

  TEXTMETRICA Metrics(const Font& font) override {
    TEXTMETRICA metrics{};
    metrics.tmHeight = metrics.tmAscent = Saturate(Magnitude(font.logical.lfHeight));
    metrics.tmAveCharWidth = metrics.tmMaxCharWidth = Saturate(Width(font));
    metrics.tmWeight = font.logical.lfWeight;
    metrics.tmItalic = font.logical.lfItalic;
    metrics.tmUnderlined = font.logical.lfUnderline;
    metrics.tmStruckOut = font.logical.lfStrikeOut;
    metrics.tmCharSet = font.logical.lfCharSet;
    metrics.tmFirstChar = metrics.tmBreakChar = ' ';
    metrics.tmLastChar = 0xFF;
    metrics.tmDefaultChar = '?';
    return metrics;
  }

  void Render(const Font&, std::string_view, POINT, const GlyphSink&) override {}
  bool MeasuresLogicalUnits() const override { return true; }

 private:
  static std::int64_t Width(const Font& font) {
    if (font.logical.lfWidth != 0) return Magnitude(font.logical.lfWidth);
    return Magnitude(font.logical.lfHeight) / 2;
  }
};

}  // namespace

TextEngine& CellText() {
  static Cells* const cells = new Cells;
  return *cells;
}

}  // namespace gfx
