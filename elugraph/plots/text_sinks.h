// The graph's own text sinks.
#pragma once

#include "elugraph/host/kernel.h"
#include "elugraph/plots/xy_graph_data.h"
#include "platform/gfx/gdi.h"

namespace plots {

// Keeps the largest width and height of the texts put, in logical units; 0 before the first.
class TextMeasureSink final : public ITextSink {
 public:
  explicit TextMeasureSink(HDC hdc) : hdc_(hdc) {}
  // False where a text cannot be measured; true for null.
  bool Put(const char* text) override;

  int width = 0;
  int height = 0;

 private:
  HDC hdc_;
};

// Draws every text at the same place.
class TextOutSink final : public ITextSink {
 public:
  TextOutSink(HDC hdc, LONG x, LONG y) : hdc_(hdc), x_(x), y_(y) {}
  // Whether the text was drawn; true for null.
  bool Put(const char* text) override;

 private:
  HDC hdc_;
  LONG x_;
  LONG y_;
};

// Joins the texts.
class TextCollector final : public ITextSink {
 public:
  explicit TextCollector(str& text) : text_(text) {}
  // False for null, and where memory ran out.
  bool Put(const char* text) override;

 private:
  str& text_;
};

}  // namespace plots
