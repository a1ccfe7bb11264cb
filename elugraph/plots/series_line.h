// The line of one series: places of points in, clipped pool runs out.
#pragma once

#include "elugraph/trace/poly_line_pool.h"
#include "platform/gfx/gdi.h"

namespace plots {

// Places are pixels in floating point, already whole numbers, of any size. Points go to the pool as
// they are. The pool's crossings are 32-bit products, though: a segment too long for them (a view
// zoomed in deeply) is cut to the surroundings of the plot here, and the line is interrupted
// outside. A place that is not finite interrupts the line as well.
class SeriesLine {
 public:
  SeriesLine(int points, const RECT& plot, HDC hdc);

  void Add(double x, double y);
  // Draws what is left. No points may follow.
  void Finish() { pool_.Draw(); }

 private:
  struct Place {
    double x;
    double y;
  };

  void Interrupt();
  void AddFarSegment(Place from, Place to);

  RECT plot_;
  PolyLinePool pool_;
  Place last_{0, 0};
  bool hasLast_ = false;
};

}  // namespace plots
