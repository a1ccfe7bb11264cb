#include <cstdint>

#include "elugraph/chromview/chrom_render.h"
#include "elugraph/host/controls.h"
#include "elugraph/trace/arithmetic.h"
#include "platform/kernel/kernel.h"

namespace {

bool MetricsOf(HDC hdc, HFONT font, TEXTMETRICA& metrics) {
  SelectObject(hdc, font);
  return GetTextMetricsA(hdc, &metrics) != FALSE;
}

// The height the font was made with, without its sign; `size` for no font.
LONG LogicalHeight(HFONT font, LONG size) {
  LOGFONTA logical{};
  if (GetObjectA(font, sizeof logical, &logical) == 0) return size;
  const std::int64_t height = logical.lfHeight;
  return SaturateToInt32(height < 0 ? -height : height);
}

}  // namespace

void TChromRender::setFontSize(HDC hdc) {
  TEXTMETRICA metrics{};
  if (hdc != nullptr) {
    const HGDIOBJ before = GetCurrentObject(hdc, OBJ_FONT);
    if (MetricsOf(hdc, font, metrics)) {
      charHeight = metrics.tmHeight;
      charWidth = metrics.tmAveCharWidth;
    }
    if (MetricsOf(hdc, labelFont, metrics)) {
      labelCharHeight = metrics.tmHeight;
      labelCharWidth = metrics.tmAveCharWidth;
    }
    SelectObject(hdc, before);
    return;
  }
  charHeight = LogicalHeight(font, charHeight);
  labelCharWidth = LogicalHeight(labelFont, labelCharWidth);
  const HDC display = CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  const int level = SaveDC(display);
  SetMapMode(display, MM_TWIPS);
  if (MetricsOf(display, font, metrics)) {
    charWidth = MulDiv(metrics.tmAveCharWidth, charHeight, metrics.tmHeight);
  }
  if (MetricsOf(display, labelFont, metrics)) {
    labelCharHeight = MulDiv(metrics.tmHeight, labelCharWidth, metrics.tmAveCharWidth);
  }
  RestoreDC(display, level);
  DeleteDC(display);
}

void TChromRender::setFontSizeW(HWND window) {
  const HDC hdc = window != nullptr && IsWindow(window) ? GetDC(window) : nullptr;
  setFontSize(hdc);
  if (hdc != nullptr) ReleaseDC(window, hdc);
}
