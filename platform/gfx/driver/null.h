// A device that draws nothing and measures as a journal does.
#pragma once

#include "platform/gfx/driver.h"
#include "platform/gfx/text_engine.h"

namespace gfx {

class NullDriver : public Driver {
 public:
  SIZE Extent() const override { return {32767, 32767}; }
  TextEngine& Text() override { return CellText(); }
  void Line(POINT, POINT, const Pen&, Clip) override {}
  void Polyline(const POINT*, int, const Pen&, Clip) override {}
  void Polygon(const POINT*, int, const Pen&, const Brush&, Clip) override {}
  void Rectangle(const RECT&, const Pen&, const Brush&, Clip) override {}
  void Ellipse(const RECT&, const Pen&, const Brush&, Clip) override {}
  void Fill(const RECT&, const Brush&, Clip) override {}
  void TextOut(const TextRun&, Clip) override {}
  void Dib(POINT, const ImageView&, Clip) override {}
  void Stretch(const RECT&, const ImageView&, const RECT&, Clip) override {}
  void Blit(const RECT&, const Surface*, POINT, Clip) override {}
};

}  // namespace gfx
