// A device that draws nothing and writes down what it was asked to draw.
#pragma once

#include <string>

#include "platform/gfx/driver.h"

namespace gfx {

// Appends one line per drawing effect to a text. Coordinates are device pixels as asked for, not
// clipped. The forms:
//
//   line X0,Y0 X1,Y1 pen=P clip=K
//   polyline N X,Y X,Y ... pen=P clip=K
//   polygon N X,Y X,Y ... pen=P brush=B clip=K
//   rectangle L,T R,B pen=P brush=B clip=K
//   ellipse L,T R,B pen=P brush=B clip=K
//   fill L,T R,B brush=B clip=K
//   text X,Y "TEXT" font=F color=C align=N bk=M clip=K
//   dib X,Y W,H hash=H clip=K
//   stretch X,Y W,H from SX,SY SW,SH hash=H clip=K
//   blit X,Y W,H from SX,SY clip=K
//
// P is style/width/#RRGGBB, B #RRGGBB or `hollow`, C #RRGGBB (upper case), F
// HEIGHTxWIDTH@ESCAPEMENT of the font as created, M 1 (transparent) or 2 (opaque), K L,T,R,B or
// `none`. H is FNV-1a, 64 bits, in 16 hex digits (lower case), over the blue, green and red bytes
// of the whole image (for dib: of the shown part), top row first; SX,SY counts from the image's top
// left. In TEXT `"` and
// `\` get a `\` in front; a line feed, carriage return and tab are \n, \r, \t, other control
// characters \xHH.
class JournalDriver final : public Driver {
 public:
  // `journal` must outlive the driver.
  explicit JournalDriver(std::string& journal) : journal_(journal) {}

  // False once memory ran out; the line that did not fit is left out whole.
  bool Ok() const override { return ok_; }
  SIZE Extent() const override { return {32767, 32767}; }
  TextEngine& Text() override;
  void Line(POINT from, POINT to, const Pen& pen, Clip clip) override;
  void Polyline(const POINT* points, int count, const Pen& pen, Clip clip) override;
  void Polygon(const POINT* points, int count, const Pen& pen, const Brush& brush,
               Clip clip) override;
  void Rectangle(const RECT& box, const Pen& pen, const Brush& brush, Clip clip) override;
  void Ellipse(const RECT& box, const Pen& pen, const Brush& brush, Clip clip) override;
  void Fill(const RECT& box, const Brush& brush, Clip clip) override;
  void TextOut(const TextRun& run, Clip clip) override;
  void Dib(POINT at, const ImageView& image, Clip clip) override;
  void Stretch(const RECT& to, const ImageView& image, const RECT& from, Clip clip) override;
  void Blit(const RECT& to, const Surface* source, POINT from, Clip clip) override;

 private:
  // Runs `write` on the journal, then ends the line with the clip.
  template <class Write>
  void Record(Clip clip, Write write);

  std::string& journal_;
  bool ok_ = true;
};

}  // namespace gfx
