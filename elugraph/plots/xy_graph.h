// Series of points as coloured lines over two axes, with titles and a legend.
#pragma once

#include "elugraph/host/export.h"
#include "elugraph/plots/xy_graph_data.h"
#include "platform/gfx/gdi.h"

// The graph keeps two ranges in data units: the full range, which ViewAll takes from the data, and
// the view range, which is drawn. Scaling and scrolling move the view within limits set by the full
// range; a step beyond them is ignored. The data source is borrowed and must live as long as it is
// set. A failure that the source raises ends the operation: ViewAll then leaves both ranges as they
// were, Render leaves the picture unfinished and the device context as it found it.
class ELUGRAPH_API TXYGraph {
 public:
  struct Range {
    double xLow;
    double xHigh;
    double yLow;
    double yHigh;
  };

  // White background, black axes, both ranges 0 … 1, no data.
  TXYGraph();

  // Always true. The ranges stay as they are.
  bool SetXYData(IXYGraphData* data);
  // Each returns the previous colour.
  COLORREF SetBackgrtound(COLORREF color);
  COLORREF SetAxisColor(COLORREF color);

  // View: the extent of the data. Full range: the same with a margin above and below. A
  // coordinate that is not a number does not count; without points a range is 0 … 1. An extent
  // below 1e-100 is widened by 1 (or, where doubles of that size are further apart, to the next
  // one), one above 1e100 (an infinite coordinate, say) counts as no points.
  void ViewAll();
  // The view's span times `factor`, its low edge fixed: from 1/10000 of the full range to twice it.
  void ScaleX(double factor);
  void ScaleY(double factor);
  // Moves the view by `fraction` of its span; it always keeps touching the full range.
  void ScrollX(double fraction);
  void ScrollY(double fraction);

  // Fills `rect` (logical units, mapped 1:1 to pixels) with the background and draws the view into
  // it. Without series, or with a plot of 10 pixels or less, there is only the background. Series s
  // has colour s mod 16 of a fixed palette. A series of fewer than two points shows only its name.
  // Coordinates are rounded to the nearest pixel, halves up.
  void Render(HDC hdc, const RECT& rect);

  const Range& FullRange() const { return full_; }
  const Range& ViewRange() const { return view_; }

 private:
  ELUGRAPH_INTERNAL void RenderSeries(HDC hdc, const RECT& rect, int count);
  ELUGRAPH_INTERNAL bool Layout(HDC hdc, const RECT& rect, int count);
  ELUGRAPH_INTERNAL bool DrawAxes(HDC hdc);
  ELUGRAPH_INTERNAL void DrawSeries(HDC hdc, int series);

  IXYGraphData* data_ = nullptr;
  COLORREF background_ = 0xFFFFFF;
  COLORREF axisColor_ = 0;
  int legendWidth_ = 0;       // pixels
  int legendLineHeight_ = 0;  // pixels
  RECT plot_{0, 0, 0, 0};
  Range full_{0, 1, 0, 1};
  Range view_{0, 1, 0, 1};
};
