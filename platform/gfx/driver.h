// Back ends of device contexts: what a drawing call becomes once mapping, handles and state are
// resolved.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/gfx/gdi.h"

namespace gfx {

class Surface;
class TextEngine;

// width in device pixels, at least 0; 0 and 1 are cosmetic: exactly one pixel.
struct Pen {
  int style;  // PS_SOLID … PS_INSIDEFRAME
  int width;
  COLORREF color;
  int bkMode = TRANSPARENT;  // OPAQUE: the gaps between dashes are drawn in bkColor
  COLORREF bkColor = 0;
};

struct Brush {
  bool hollow;
  COLORREF color;
};

// `logical` is what the font was created with; height and width are the same fields in device
// pixels (sign kept), which differ from it only where a unit is not a pixel.
struct Font {
  LOGFONTA logical;
  LONG height;
  LONG width;
};

// One run of text on one line. `at` is the reference point that `align` (TA_ values without
// TA_UPDATECP) speaks about; the run turns about it by the font's escapement.
struct TextRun {
  POINT at;
  std::string_view text;
  const Font& font;
  COLORREF color;
  UINT align;
  int bkMode;  // TRANSPARENT or OPAQUE; opaque fills the text's cell with bkColor first
  COLORREF bkColor;
};

// Pixels in the order blue, green, red, rows seen from the top: row r starts at top + r × stride.
struct ImageView {
  const BYTE* top;
  std::ptrdiff_t stride;  // bytes; negative for images stored bottom row first
  int width;
  int height;
  int bytesPerPixel;  // 3 or 4
};

// null: no clip. Otherwise device pixels, right and bottom excluded; may be empty.
using Clip = const RECT*;

// A driver gets device pixels, y down, right and bottom edges excluded, resolved attributes, any
// 32-bit coordinates. It draws or drops what it is given, never throws and never keeps a pointer.
// Only the text engine and the pure operations are required.
class Driver {
 public:
  Driver() = default;
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;
  virtual ~Driver() = default;

  // False after the first failure of the target (a full disk, say); drawing calls then do nothing.
  virtual bool Ok() const { return true; }
  virtual SIZE Extent() const = 0;  // pixels
  virtual int DotsPerInch() const { return 96; }
  virtual TextEngine& Text() = 0;

  // The last point is not drawn.
  virtual void Line(POINT from, POINT to, const Pen& pen, Clip clip) = 0;
  virtual void Polyline(const POINT* points, int count, const Pen& pen, Clip clip) = 0;
  // Even-odd; outlined by the pen, closing edge included.
  virtual void Polygon(const POINT* points, int count, const Pen& pen, const Brush& brush,
                       Clip clip) = 0;
  // left ≤ right and top ≤ bottom in these three.
  virtual void Rectangle(const RECT& box, const Pen& pen, const Brush& brush, Clip clip) = 0;
  virtual void Ellipse(const RECT& box, const Pen& pen, const Brush& brush, Clip clip) = 0;
  virtual void Fill(const RECT& box, const Brush& brush, Clip clip) = 0;
  virtual void TextOut(const TextRun& run, Clip clip) = 0;

  // `image` is just the part to show, its top left pixel at `at`.
  virtual void Dib(POINT at, const ImageView& image, Clip clip) = 0;
  // The part `from` of `image`, stretched over `to` by nearest neighbour; `from` lies inside.
  virtual void Stretch(const RECT& to, const ImageView& image, const RECT& from, Clip clip) = 0;
  // Copies from another context's pixels; `source` is null where that context has none.
  virtual void Blit(const RECT& to, const Surface* source, POINT from, Clip clip) = 0;
  // The pixels drawn on, for contexts that have them: the source of a Blit.
  virtual const Surface* Pixels() const { return nullptr; }
};

}  // namespace gfx
