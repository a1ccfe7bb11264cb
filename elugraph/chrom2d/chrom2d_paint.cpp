// Painting: layout, background and axes.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/plots/axis.h"
#include "elugraph/plots/device_scopes.h"

namespace {

// An object of one's own, selected while this lives and then deleted; null: nothing happens.
class OwnPen {
 public:
  OwnPen(HDC hdc, COLORREF color)
      : hdc_(hdc), pen_(CreatePen(PS_SOLID, 0, color)), before_(SelectObject(hdc, pen_)) {}
  OwnPen(const OwnPen&) = delete;
  OwnPen& operator=(const OwnPen&) = delete;
  ~OwnPen() {
    SelectObject(hdc_, before_);
    DeleteObject(pen_);
  }

 private:
  HDC hdc_;
  HPEN pen_;
  HGDIOBJ before_;
};

SIZE ExtentOf(HDC hdc, const char* text) {
  SIZE extent{0, 0};
  GetTextExtentPoint32A(hdc, text, static_cast<int>(std::strlen(text)), &extent);
  return extent;
}

// a + factor · b, limited to 32 bits.
LONG Shifted(LONG a, LONG b, int factor) {
  return static_cast<LONG>(std::clamp<std::int64_t>(std::int64_t{a} + std::int64_t{factor} * b,
                                                    std::numeric_limits<LONG>::min(),
                                                    std::numeric_limits<LONG>::max()));
}

void FillBackground(HDC hdc, const RECT& rect, COLORREF color) {
  const HBRUSH brush = CreateSolidBrush(color);
  if (brush == nullptr) return;
  FillRect(hdc, &rect, brush);
  DeleteObject(brush);
}

}  // namespace

void TChrom2DBase::PaintImage(HWND, HDC hdc, RECT rect) { draw(hdc, rect); }

void TChrom2DBase::draw(HDC hdc, const RECT& rect) {
  const plots::StateScope state(hdc);
  SetMapMode(hdc, MM_TEXT);
  SetBkMode(hdc, TRANSPARENT);
  if (font != nullptr) SelectObject(hdc, font);
  const OwnPen pen(hdc, axis_col);
  SetTextColor(hdc, axis_col);
  FillBackground(hdc, rect, bk_col);
  if (!ViewsCalc(hdc, rect)) return;
  graphs(hdc, rect);
  axis(hdc, rect);
}

bool TChrom2DBase::ViewsCalc(HDC hdc, const RECT& rect) {
  const SIZE waveLabel = ExtentOf(hdc, "000.000");
  const SIZE timeUnit = ExtentOf(hdc, "sec00");
  mapRect = {Shifted(rect.left, waveLabel.cx, 1), Shifted(rect.top, waveLabel.cy, 1),
             Shifted(rect.right, timeUnit.cx, -1), Shifted(rect.bottom, timeUnit.cy, -2)};
  return mapRect.left < mapRect.right && mapRect.top < mapRect.bottom;
}

void TChrom2DBase::axis(HDC hdc, const RECT&) try {
  SetTextAlign(hdc, TA_LEFT | TA_TOP);
  double start = timeFrom;
  double end = timeTo;
  const char* unit = nullptr;
  if (chrom) {
    const double offsetSec = chrom->timeOffsetMs / 1000.0;
    start = chrom->units(offsetSec + timeFrom);
    end = chrom->units(offsetSec + timeTo);
    if (chrom->window != nullptr) unit = chrom->window->xunitsTxt();
  }
  const LONG lastColumn = Shifted(mapRect.right, 1, -1);
  const LONG lastRow = Shifted(mapRect.bottom, 1, -1);
  THAxis(start, end, unit).Draw(hdc, mapRect.bottom, mapRect.left, lastColumn, TA_CENTER | TA_TOP);
  TVAxis(waveFrom, waveTo, nullptr)
      .Draw(hdc, Shifted(mapRect.left, 1, -1), lastRow, mapRect.top, TA_BASELINE | TA_RIGHT);
} catch (...) {  // the host's; what was drawn stays
}
