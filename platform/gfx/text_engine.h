// Fonts: measuring and glyph images, apart from any device.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/gfx/driver.h"

namespace gfx {

// Coverage of a glyph (or of a whole run), 0 … 255, rows from the top.
struct GlyphImage {
  int left;  // device column of the first pixel
  int top;   // device row of the first pixel
  int width;
  int height;
  const BYTE* coverage;
  int stride;
};
using GlyphSink = std::function<void(const GlyphImage&)>;

class TextEngine {
 public:
  virtual ~TextEngine() = default;
  // Device pixels along and across the line, whatever the escapement. Empty text: width 0.
  virtual SIZE Extent(const Font& font, std::string_view text) = 0;
  virtual TEXTMETRICA Metrics(const Font& font) = 0;
  // Glyph images of the run whose first glyph's origin lies on `origin` (on the baseline): on the
  // upper left corner of that pixel, so that upright glyphs stand on the row above it.
  virtual void Render(const Font& font, std::string_view text, POINT origin,
                      const GlyphSink& sink) = 0;
  // The same for a device that shows only `visible` (device pixels, right and bottom excluded):
  // what lies outside of it may be left out.
  virtual void RenderVisible(const Font& font, std::string_view text, POINT origin,
                             const RECT& visible, const GlyphSink& sink) {
    (void)visible;
    Render(font, text, origin, sink);
  }
  // True where extents and metrics are in logical units, whatever the map mode; contexts then do
  // not scale them.
  virtual bool MeasuresLogicalUnits() const { return false; }
};

// The machine's fonts; falls back on the built-in font where the machine has none.
TextEngine& SystemText();
// A small bitmap font drawn for this project: 6 × 12 pixels, magnified to whole multiples; upright
// text and multiples of 90 degrees are exact. The same pixels on every machine.
TextEngine& BuiltinText();
// Fixed cells without glyphs: width = bytes × (|lfWidth|, or |lfHeight| / 2 where that is 0),
// height = ascent = |lfHeight|, in logical units. For journals.
TextEngine& CellText();

// Where the origin of the first glyph of a run lies (on the baseline), for the run's alignment and
// escapement, given the extent and ascent of its font. Angles other than multiples of 90 degrees
// are rounded to the nearest pixel.
POINT BaselineOrigin(const TextRun& run, SIZE extent, LONG ascent);

// The code points of a text: well-formed UTF-8, and Latin-1 for bytes that are not part of it.
std::u32string DecodeText(std::string_view text);

}  // namespace gfx
