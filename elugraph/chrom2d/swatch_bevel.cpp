#include "elugraph/chrom2d/swatch_bevel.h"

#include <algorithm>

#include "platform/ui/user.h"

namespace {

// Positions inside the item, all included.
struct Box {
  int left, top, right, bottom;
};

class Bevel {
 public:
  Bevel(HDC hdc, const RECT& item)
      : ex(Depth(SM_CXEDGE)),
        ey(Depth(SM_CYEDGE)),
        hdc_(hdc),
        origin_{item.left, item.top},
        outer_{0, 0, item.right - item.left - 1, item.bottom - item.top - 1} {}

  // The box `levels` edges inside the outermost one.
  Box Inside(int levels) const {
    const int dx = levels * (ex + 1), dy = levels * (ey + 1);
    return {outer_.left + dx, outer_.top + dy, outer_.right - dx, outer_.bottom - dy};
  }
  void BottomRight(const Box& box, int color) const {
    Fill({box.left, box.bottom - ey, box.right, box.bottom},
         {box.right - ex, box.top, box.right, box.bottom}, color);
  }
  // Ends where the bottom right edge of the same box begins.
  void TopLeft(Box box, int color) const {
    box.right -= ex + 1;
    box.bottom -= ey + 1;
    Fill({box.left, box.top, box.left + ex, box.bottom},
         {box.left, box.top, box.right, box.top + ey}, color);
  }

 private:
  // Pixels beyond the first.
  static int Depth(int metric) { return std::max(0, GetSystemMetrics(metric) / 2 - 1); }

  void Fill(const Box& one, const Box& other, int color) const {
    const HBRUSH brush = CreateSolidBrush(GetSysColor(color));
    for (const Box& box : {one, other}) {
      const RECT rect{origin_.x + box.left, origin_.y + box.top, origin_.x + box.right + 1,
                      origin_.y + box.bottom + 1};
      // In an item smaller than its edges nothing is left of some.
      if (!IsRectEmpty(rect)) FillRect(hdc_, &rect, brush);
    }
    DeleteObject(brush);
  }

  const int ex, ey;
  const HDC hdc_;
  const POINT origin_;
  const Box outer_;
};

}  // namespace

void DrawSwatchBevel(HDC hdc, const RECT& item, bool selected) {
  const Bevel bevel(hdc, item);
  const Box outer = bevel.Inside(0), inner = bevel.Inside(1);
  bevel.BottomRight(outer, selected ? COLOR_3DHIGHLIGHT : COLOR_3DDKSHADOW);
  bevel.BottomRight(inner, selected ? COLOR_3DLIGHT : COLOR_3DSHADOW);
  bevel.TopLeft(outer, selected ? COLOR_3DSHADOW : COLOR_3DHIGHLIGHT);
  bevel.TopLeft(inner, selected ? COLOR_3DDKSHADOW : COLOR_3DLIGHT);
}
