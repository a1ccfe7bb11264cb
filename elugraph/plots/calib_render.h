// The calibration of a chromatogram's current component: points, curve, confidence band, axes.
#pragma once

#include "elugraph/host/export.h"
#include "elugraph/host/kernel.h"
#include "elugraph/host/records.h"
#include "platform/gfx/gdi.h"

namespace plots {
struct CalibSource;
struct CalibSettings;
}  // namespace plots

// Calibration arithmetic is the host's; the view only chooses ranges and draws. It holds a counted
// reference on the chromatogram. Every Render works from scratch and leaves the device context as
// it found it; the curve is clipped to the plot alone, not to the context's own clip. Places are
// truncated toward zero to whole pixels and limited to 32 bits. A failure that the host raises ends
// the drawing where it is.
class ELUGRAPH_API TCalibRender {
 public:
  // A null chromatogram draws nothing.
  explicit TCalibRender(chromatogram* run);
  TCalibRender(const TCalibRender&) = delete;
  TCalibRender& operator=(const TCalibRender&) = delete;
  ~TCalibRender();

  // For all text; stays the caller's.
  void SetFont(HFONT font);

  // Draws into `rect`, in the units of the context. Circles are filled with the context's brush.
  // Nothing is drawn without a font or a component; without axes' extent (a plot of zero width or
  // height, ranges that are not finite) only the layout is made. A font that cannot be described
  // leaves titles upright and exponents as large as the rest. The curve covers at most
  // kMostColumns columns.
  void Render(HDC hdc, RECT& rect);

  static constexpr int kMostColumns = 1 << 20;

 private:
  ELUGRAPH_INTERNAL void Layout(HDC hdc, const RECT& rect);
  ELUGRAPH_INTERNAL void Draw(HDC hdc);
  ELUGRAPH_INTERNAL bool ChooseScales(const plots::CalibSource& source,
                                      const plots::CalibSettings& settings);
  ELUGRAPH_INTERNAL void DrawCross(HDC hdc);
  ELUGRAPH_INTERNAL void DrawAxes(HDC hdc);
  ELUGRAPH_INTERNAL void DrawFactor(HDC hdc, LONG x, LONG y, int exponent);
  ELUGRAPH_INTERNAL void DrawPoints(HDC hdc, const plots::CalibSource& source);
  ELUGRAPH_INTERNAL void DrawCurve(HDC hdc, const plots::CalibSource& source);
  // Pixels from the plot's left edge and from its bottom edge.
  double Rightward(double x) const { return (x - xLow_) / xUnitsPerPixel_; }
  double Upward(double y) const { return (y - yLow_) / yUnitsPerPixel_; }

  chromatogram* run_;
  double xLow_ = 0;
  double xHigh_ = 0;
  double yLow_ = 0;
  double yHigh_ = 0;
  double curveStart_ = 0;  // x
  double yLowMargin_ = 0;
  double xUnitsPerPixel_ = 0;
  double yUnitsPerPixel_ = 0;
  int xExponent_ = 0;
  int yExponent_ = 0;
  str xTitle_;
  str yTitle_;
  HFONT font_ = nullptr;         // not owned
  HFONT rotatedFont_ = nullptr;  // these two live during a Render
  HFONT smallFont_ = nullptr;
  int digitWidth_ = 0;
  int digitHeight_ = 0;
  int plotLeft_ = 0;
  int plotBottom_ = 0;  // the row of the x axis
  int plotRight_ = 0;
  int plotTop_ = 0;
  int viewWidth_ = 0;
  int viewHeight_ = 0;
  COLORREF color_ = 0;
};
