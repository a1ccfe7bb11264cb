#include "elugraph/plots/calib_render.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "elugraph/heightmap/kernels.h"
#include "elugraph/host/engine.h"
#include "elugraph/plots/axis.h"
#include "elugraph/plots/calib_ranges.h"
#include "elugraph/plots/device_scopes.h"
#include "elugraph/plots/numbers.h"
#include "elugraph/trace/gdi_object_holders.h"

using plots::CalibSettings;
using plots::CalibSource;
using plots::Offset;

namespace {

constexpr unsigned kResponseTitle = 324030;

void TextAt(HDC hdc, LONG x, LONG y, const char* text) {
  TextOutA(hdc, x, y, text, static_cast<int>(std::strlen(text)));
}

int WidthOf(HDC hdc, const char* text) {
  SIZE extent{};
  GetTextExtentPoint32A(hdc, text, static_cast<int>(std::strlen(text)), &extent);
  return extent.cx;
}

// value / 10^exponent
double Scaled(double value, int exponent) {
  return static_cast<double>(value / PowerOfTen(exponent));
}

// Deletes the fonts of one Render; made before the state is saved, so that they are no longer
// selected when they go.
class FontsScope {
 public:
  FontsScope(HFONT& rotated, HFONT& small) : rotated_(rotated), small_(small) {}
  FontsScope(const FontsScope&) = delete;
  FontsScope& operator=(const FontsScope&) = delete;
  ~FontsScope() {
    for (HFONT* font : {&rotated_, &small_}) {
      if (*font != nullptr) DeleteObject(*font);
      *font = nullptr;
    }
  }

 private:
  HFONT& rotated_;
  HFONT& small_;
};

// A curve with room for `columns` points, allocated once; the points are 0 until they are set.
class CurvePoints {
 public:
  explicit CurvePoints(int columns) : points_(new (std::nothrow) POINT[columns]{}) {}

  explicit operator bool() const { return points_ != nullptr; }
  void Set(int index, LONG x, LONG y) { points_[index] = {x, y}; }
  void Draw(HDC hdc, int count) const { Polyline(hdc, points_.get(), count); }

 private:
  std::unique_ptr<POINT[]> points_;
};

}  // namespace

TCalibRender::TCalibRender(chromatogram* run) : run_(run) {
  if (run_ != nullptr) run_->AddRef();
}

TCalibRender::~TCalibRender() {
  if (run_ != nullptr) run_->Release();
}

void TCalibRender::SetFont(HFONT font) { font_ = font; }

void TCalibRender::Render(HDC hdc, RECT& rect) {
  if (hdc == nullptr || font_ == nullptr || run_ == nullptr) return;
  try {
    const FontsScope fonts(rotatedFont_, smallFont_);
    const plots::StateScope state(hdc);
    Layout(hdc, rect);
    Draw(hdc);
  } catch (...) {  // the host's failure ends the drawing
  }
}

void TCalibRender::Layout(HDC hdc, const RECT& rect) {
  if (rect.left != 0 || rect.top != 0) SetViewportOrgEx(hdc, rect.left, rect.top, nullptr);
  viewWidth_ = SaturateToInt32(std::int64_t{rect.right} - rect.left);
  viewHeight_ = SaturateToInt32(std::int64_t{rect.bottom} - rect.top);

  SelectObject(hdc, font_);
  SIZE digit{};
  GetTextExtentPoint32A(hdc, "0", 1, &digit);
  digitWidth_ = digit.cx;
  digitHeight_ = digit.cy;
  LOGFONTA logical{};
  if (GetObjectA(font_, sizeof logical, &logical) != 0) {
    logical.lfEscapement = 900;
    rotatedFont_ = CreateFontIndirectA(&logical);
    SelectObject(hdc, rotatedFont_);
    GetTextExtentPoint32A(hdc, "0", 1, &digit);
    logical.lfEscapement = 0;
    logical.lfHeight = SaturateToInt32(std::int64_t{logical.lfHeight} * 5 / 6);
    logical.lfWidth = SaturateToInt32(std::int64_t{logical.lfWidth} * 5 / 6);
    smallFont_ = CreateFontIndirectA(&logical);
  }

  const std::int64_t width = digitWidth_;
  const std::int64_t height = digitHeight_;
  plotBottom_ = Offset(viewHeight_, -(height * 7 / 5));
  plotLeft_ = SaturateToInt32(std::int64_t{digit.cy} * 7 / 5 + 3 * width);
  plotRight_ = Offset(viewWidth_, -5 * width);
  plotTop_ = SaturateToInt32(height * 3 / 2);
}

void TCalibRender::Draw(HDC hdc) {
  CalibPool& pool = run_->calibration;
  const CalibSource source{pool, pool.ComponentAt(run_->currentComponent)};
  if (source.of == nullptr) return;
  if (pool.mode == 1 && (pool.flags & CalibPool::kShowReference) != 0 &&
      pool.referenceComponent == run_->currentComponent) {
    DrawCross(hdc);
    return;
  }
  const CalibSettings settings = plots::SettingsOf(source);
  if (!ChooseScales(source, settings)) return;

  xExponent_ = plots::FactorExponent(xHigh_ - xLow_);
  yExponent_ = plots::FactorExponent(yHigh_ - yLow_);
  const str quantity(CompTypeTxt(settings.quantityType));
  const str response(muiGetString(kResponseTitle));
  xTitle_ = settings.swapped ? response : quantity;
  yTitle_ = settings.swapped ? quantity : response;

  const GdiObjectSelector pen(hdc, CreatePen(PS_SOLID, 0, color_));
  DrawAxes(hdc);
  DrawPoints(hdc, source);
  DrawCurve(hdc, source);
}

void TCalibRender::DrawCross(HDC hdc) {
  const GdiObjectSelector pen(hdc, CreatePen(PS_SOLID, 0, color_));
  MoveToEx(hdc, 0, 0, nullptr);
  LineTo(hdc, viewWidth_, viewHeight_);
  MoveToEx(hdc, viewWidth_, 0, nullptr);
  LineTo(hdc, 0, viewHeight_);
}

bool TCalibRender::ChooseScales(const CalibSource& source, const CalibSettings& settings) {
  const plots::CalibRanges ranges = plots::ChooseCalibRanges(source, settings);
  xLow_ = ranges.xLow;
  xHigh_ = ranges.xHigh;
  yLow_ = ranges.yLow;
  yHigh_ = ranges.yHigh;
  curveStart_ = ranges.curveStart;
  yLowMargin_ = ranges.yLowMargin;
  xUnitsPerPixel_ = yUnitsPerPixel_ = 0;
  const double width = plots::Span(plotLeft_, plotRight_);
  const double height = plots::Span(plotTop_, plotBottom_);
  if (viewWidth_ != 0 && width != 0) xUnitsPerPixel_ = (xHigh_ - xLow_) / width;
  if (plotBottom_ != 0 && height != 0) yUnitsPerPixel_ = (yHigh_ - yLow_) / height;
  return std::isnormal(xUnitsPerPixel_) && std::isnormal(yUnitsPerPixel_);
}

void TCalibRender::DrawAxes(HDC hdc) {
  const int titleRow = Offset(plotBottom_, -2 * std::int64_t{digitHeight_} / 3);
  SetTextColor(hdc, color_);
  SetBkMode(hdc, TRANSPARENT);
  SelectObject(hdc, rotatedFont_);
  SetTextAlign(hdc, TA_RIGHT);
  TextAt(hdc, 0, digitHeight_ / 3, yTitle_.c_str());
  SelectObject(hdc, font_);
  SetTextAlign(hdc, TA_RIGHT | TA_BOTTOM);
  TextAt(hdc, viewWidth_, titleRow, xTitle_.c_str());

  THAxis(Scaled(xLow_, xExponent_), Scaled(xHigh_, xExponent_), nullptr)
      .Draw(hdc, plotBottom_, plotLeft_, plotRight_, TA_CENTER | TA_TOP);
  DrawFactor(hdc, viewWidth_, titleRow, xExponent_);
  TVAxis(Scaled(yLow_, yExponent_), Scaled(yHigh_, yExponent_), nullptr)
      .Draw(hdc, plotLeft_, plotBottom_, plotTop_, TA_BASELINE | TA_RIGHT);
  DrawFactor(hdc, Offset(plotLeft_, 2 * std::int64_t{digitWidth_}), 0, yExponent_);
}

// ".10" and the raised exponent, ending at column x. Digits of the exponent start at row y.
void TCalibRender::DrawFactor(HDC hdc, LONG x, LONG y, int exponent) {
  if (exponent == 0) return;
  const HGDIOBJ previous = GetCurrentObject(hdc, OBJ_FONT);
  if (exponent != 1) {
    char text[16];
    std::snprintf(text, sizeof text, "%d", exponent);
    SetTextAlign(hdc, TA_RIGHT);
    SelectObject(hdc, smallFont_);
    TextAt(hdc, x, y, text);
    x = Offset(x, -WidthOf(hdc, text));
  }
  SelectObject(hdc, font_);
  SetTextAlign(hdc, TA_RIGHT);
  TextAt(hdc, x, Offset(y, digitHeight_ / 2), "10");
  x = Offset(x, -WidthOf(hdc, "10"));
  TextAt(hdc, x, Offset(y, digitHeight_ / 4), ".");
  SelectObject(hdc, previous);
}

void TCalibRender::DrawPoints(HDC hdc, const CalibSource& source) {
  SetTextAlign(hdc, TA_BOTTOM | TA_CENTER);
  SelectObject(hdc, font_);
  const std::int64_t radius = digitHeight_ / 4;
  const int points = source.PointCount();
  for (int point = 0; point < points; ++point) {
    if (source.pool.PointIsExcluded(source.of, point)) continue;
    const LONG column = TruncToInt32(plotLeft_ + Rightward(source.pool.PointToX(source.of, point)));
    const LONG row = TruncToInt32(plotBottom_ - Upward(source.pool.PointToY(source.of, point)));
    Ellipse(hdc, Offset(column, -radius), Offset(row, -radius), Offset(column, radius + 1),
            Offset(row, radius + 1));
    if (const CalibPointRecord* record = source.pool.points.At(point)) {
      char number[8];
      std::snprintf(number, sizeof number, "%d", record->number);
      TextAt(hdc, column, Offset(row, -(3 * radius / 2)), number);
    }
  }
}

void TCalibRender::DrawCurve(HDC hdc, const CalibSource& source) {
  const plots::ClipScope clip(hdc, {plotLeft_, plotTop_, plotRight_, plotBottom_});
  const int columns =
      static_cast<int>(std::min(plots::Span(plotLeft_, plotRight_), double{kMostColumns}));
  if (columns <= 0) return;
  CurvePoints curve(columns);
  CurvePoints upper(columns);
  CurvePoints lower(columns);
  if (!curve || !upper || !lower) return;

  CalibPool& pool = source.pool;
  CurveStatistics* const statistics = source.of->statistics;
  const bool band = (pool.flags & CalibPool::kShowBand) != 0 && statistics != nullptr &&
                    statistics->Available() != 0;
  const LONG start =
      std::clamp(Offset(plotLeft_, RoundToInt(Rightward(curveStart_))), plotLeft_, plotRight_);
  const int count =
      static_cast<int>(std::min<std::int64_t>(std::int64_t{plotRight_} - start, columns));
  double x = curveStart_;
  for (int k = 0; k < count; ++k, x += xUnitsPerPixel_) {
    const LONG column = start + k;
    const LONG row = TruncToInt32(plotBottom_ - Upward(pool.XtoYtab(source.of, x)));
    curve.Set(k, column, row);
    if (!band) continue;
    double halfWidth = 0;
    statistics->BandHalfWidth(pool.bandLevel, x, pool.XtoStatWeight(source.of, x), halfWidth);
    const LONG distance = TruncToInt32(halfWidth / yUnitsPerPixel_);
    upper.Set(k, column, Offset(row, distance));
    lower.Set(k, column, Offset(row, -std::int64_t{distance}));
  }

  curve.Draw(hdc, count);
  if (!band) return;
  const LOGPEN dotted{PS_DOT, {1, 0}, 0};
  const GdiObjectSelector pen(hdc, CreatePenIndirect(&dotted));
  upper.Draw(hdc, count);
  lower.Draw(hdc, count);
}
