#include <cstdio>
#include <cstring>
#include <string>

#include "elugraph/chromview/axis_ticks.h"
#include "elugraph/chromview/chrom_render.h"
#include "elugraph/chromview/guard.h"
#include "elugraph/chromview/host_text.h"
#include "elugraph/chromview/tick_positions.h"
#include "elugraph/host/controls.h"
#include "elugraph/trace/gdi_object_holders.h"

namespace {

constexpr double kFewestDecimalsFrom = 100;  // full scales from here on have no decimals
constexpr double kTimePerPixelForZero = 0.1;

// A number with an optional unit behind it.
class Printed {
 public:
  template <typename... Arguments>
  explicit Printed(const char* format, Arguments... arguments) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
    if (std::snprintf(text_, sizeof text_, format, arguments...) < 0) text_[0] = '\0';
#pragma GCC diagnostic pop
  }
  const char* c_str() const { return text_; }
  int Length() const { return static_cast<int>(std::strlen(text_)); }
  void WriteAt(HDC hdc, int x, int y) const { TextOutA(hdc, x, y, text_, Length()); }

 private:
  char text_[257];
};

void Line(HDC hdc, int x0, int y0, int x1, int y1) {
  MoveToEx(hdc, x0, y0, nullptr);
  LineTo(hdc, x1, y1);
}

bool AnyAuxiliary(const chromatogram& chrom) {
  for (LONG i = 0; i < chrom.auxChannels.Size(); ++i) {
    const TChannel* channel = chrom.auxChannels.At(i);
    if (channel != nullptr && channel->visible != 0) return true;
  }
  return false;
}

// The channel whose unit stands for all auxiliary channels; may be null.
const TChannel* AuxiliaryForTexts(const chromatogram& chrom) {
  for (LONG i = 0; i < chrom.auxChannels.Size(); ++i) {
    const TChannel* channel = chrom.auxChannels.At(i);
    if (channel != nullptr && channel->visible == 1) return channel;
  }
  return chrom.auxChannels.At(0);
}

std::string UnitOf(const TChannel* channel) {
  return channel != nullptr ? FixedText(channel->unit).c_str() : "";
}

}  // namespace

class TChromRender::AxesPainter {
 public:
  AxesPainter(TChromRender& render, const TChannel& current, HDC hdc, int flags)
      : render_(render),
        view_(*render.View()),
        chrom_(*render.chrom.get()),
        current_(current),
        hdc_(hdc),
        flags_(flags),
        timeUnit_(HostText(view_.xunitsTxt())),
        unit_(UnitOf(&current)),
        timePerPixel_(chrom_.units(view_.timePerPixel)),
        timeAtX0_(chrom_.units(view_.t0 + chrom_.timeOffsetMs / 1000.0)),
        half_(render.charHeight / 2),
        third_(render.charHeight / 3),
        grid_((view_.flags & THoldWindow::kGrid) != 0),
        textColourBefore_(SetTextColor(hdc, view_.colours.axis())),
        gridPenHandle_(CreatePen(PS_DOT, 0, view_.colours.axis())),
        gridPen_(hdc, gridPenHandle_),
        axisPenHandle_(CreatePen(PS_SOLID, AxisWidth(), view_.colours.axis())),
        axisPen_(hdc, axisPenHandle_) {}

  void Run() {
    SetBkMode(hdc_, TRANSPARENT);
    SelectObject(hdc_, render_.font);
    if ((flags_ & kPassFrame) != 0) Rectangle(hdc_, 0, 0, render_.width, render_.height);
    if ((flags_ & kPassAxisLine) != 0 || view_.x0 != 0) {
      Line(hdc_, view_.x0, 0, view_.x0, view_.plotBottom);
    } else {
      MoveToEx(hdc_, view_.x0, view_.plotBottom, nullptr);
    }
    LineTo(hdc_, render_.width, view_.plotBottom);
    const TickPositions timeTicks = TimeTicks();
    if (view_.x0 == 0) {
      Legends(timeTicks);
    } else {
      SignalAxis();
      if (AnyAuxiliary(chrom_)) AuxiliaryAxis();
    }
    SetTextColor(hdc_, textColourBefore_);
  }

 private:
  int AxisWidth() const { return TruncToInt32(view_.thickness[8] / 100.0 * render_.charHeight); }

  void GridLineTo(int x, int y) {
    SelectObject(hdc_, gridPenHandle_);
    LineTo(hdc_, x, y);
    SelectObject(hdc_, axisPenHandle_);
  }

  // Ticks, numbers, grid and unit of the time axis. Returns where the ticks stand.
  TickPositions TimeTicks() {
    const int unitLength = static_cast<int>(timeUnit_.size());
    AxisTicks ticks;
    ticks.ChooseTimeTicks(render_.charWidth * timePerPixel_, timeAtX0_,
                          timeAtX0_ + view_.plotWidth * timePerPixel_);
    const double timePerPixel = timePerPixel_ != 0 ? timePerPixel_ : kTimePerPixelForZero;
    const double stepPx = ticks.step / timePerPixel;
    // No number runs into the unit.
    const int limit = TruncToInt32(
        render_.width - static_cast<double>(unitLength) * render_.charWidth - stepPx / 2);
    SetTextAlign(hdc_, TA_CENTER | TA_BOTTOM);
    double value = ticks.first;
    const int end = render_.width - render_.rightReserve;
    const TickPositions positions(view_.x0 + (ticks.first - timeAtX0_) / timePerPixel, stepPx);
    positions.Walk(
        1, [end](int x) { return x <= end; },
        [&](int x) {
          if (x != 0) TimeTick(x, value, ticks.format, x < limit);
          value += ticks.step;
        });
    SetTextAlign(hdc_, TA_RIGHT | TA_BOTTOM);
    TextOutA(hdc_, render_.width, render_.height, timeUnit_.c_str(), unitLength);
    return positions;
  }

  void TimeTick(int x, double value, const char* format, bool labelled) {
    Line(hdc_, x, view_.plotBottom + third_, x, view_.plotBottom);
    if (labelled) Printed(format, value).WriteAt(hdc_, x, render_.height);
    if (grid_) GridLineTo(x, 0);
  }

  // Without strips: full scales in the top corners, and a grid at the time axis's distances.
  void Legends(const TickPositions& timeTicks) {
    const int top = render_.margin();
    Line(hdc_, 0, top, third_, top);
    const char* format = view_.fullScale >= kFewestDecimalsFrom ? "%-.0f %s" : "%-.3g %s";
    SetTextAlign(hdc_, TA_LEFT | TA_TOP);
    Printed(format, view_.fullScale, unit_.c_str()).WriteAt(hdc_, render_.charWidth / 2, third_);
    if (AnyAuxiliary(chrom_)) {
      const Printed text("%g %s", view_.auxMax, UnitOf(AuxiliaryForTexts(chrom_)).c_str());
      SIZE extent{0, 0};
      GetTextExtentPoint32A(hdc_, text.c_str(), text.Length(), &extent);
      text.WriteAt(hdc_, view_.plotWidth - extent.cx - render_.charWidth / 2, third_);
      Line(hdc_, view_.plotWidth, top, view_.plotWidth - third_, top);
    }
    if (!grid_) return;
    SelectObject(hdc_, gridPenHandle_);
    timeTicks.AboveRow(view_.plotBottom)
        .Walk(
            -1, [top](int y) { return y >= top; },
            [&](int y) { Line(hdc_, view_.x0, y, render_.width, y); });
    SelectObject(hdc_, axisPenHandle_);
  }

  // Ticks of a value axis upward from the plot's bottom, which has the value `origin`;
  // tick(y, value) draws one.
  template <typename Tick>
  void ValueTicks(double unitsPerPixel, double origin, AxisTicks& ticks, Tick tick) {
    ticks.ChooseValueTicks(render_.charHeight * unitsPerPixel, origin, 0);
    double value = ticks.first;
    const int top = render_.margin();
    TickPositions(view_.plotBottom - (ticks.first - origin) / unitsPerPixel,
                  ticks.step / unitsPerPixel)
        .Walk(
            -1, [top](int y) { return y >= top; },
            [&](int y) {
              if (y < view_.plotBottom) tick(y, Printed(ticks.format, value));
              value += ticks.step;
            });
  }

  void SignalAxis() {
    double origin = 0;
    if ((view_.flags & THoldWindow::kRelativeAxis) != 0) {
      const double zeroLinePx = render_.getoffset(chrom_.curchan()) - view_.plotBottom;
      const double reference = static_cast<double>(current_.zero) - current_.referenceLevel;
      origin = zeroLinePx * view_.unitsPerPixel + reference * current_.unitsPerCount;
    }
    const int right = view_.x0 - third_;
    SetTextAlign(hdc_, TA_RIGHT);
    AxisTicks ticks;
    ValueTicks(view_.unitsPerPixel, origin, ticks, [&](int y, const Printed& number) {
      Line(hdc_, view_.x0, y, right, y);
      number.WriteAt(hdc_, right, y - half_);
      if (grid_) GridLineTo(render_.width - render_.rightReserve, y);
    });
    TextOutA(hdc_, right, third_, unit_.c_str(), static_cast<int>(unit_.size()));
  }

  void AuxiliaryAxis() {
    const Printed unit("%s", UnitOf(AuxiliaryForTexts(chrom_)).c_str());
    SIZE extent{0, 0};
    GetTextExtentPoint32A(hdc_, unit.c_str(), unit.Length(), &extent);
    unit.WriteAt(hdc_, view_.plotWidth + extent.cx + third_, third_);
    const int axisX = render_.width - render_.rightReserve - 1;
    if (render_.rightReserve > 0) Line(hdc_, axisX, 0, axisX, view_.plotBottom);
    const double origin = view_.auxMin < view_.auxMax ? view_.auxMin : view_.auxMax;
    AxisTicks ticks;
    ValueTicks(render_.dAuxScale(), origin, ticks, [&](int y, const Printed& number) {
      Line(hdc_, view_.plotWidth, y, view_.plotWidth + third_, y);
      const LONG wide = GetTextExtent(nullptr, number.c_str(), hdc_, number.Length()).cx;
      // Right-aligned, so that the number begins beside the tick.
      number.WriteAt(hdc_, view_.plotWidth + wide + third_ + render_.charWidth / 2, y - half_);
    });
  }

  TChromRender& render_;
  const THoldWindow& view_;
  chromatogram& chrom_;
  const TChannel& current_;
  HDC hdc_;
  int flags_;
  // The host's answers, all of them there before anything is drawn.
  std::string timeUnit_;
  std::string unit_;
  double timePerPixel_;  // these two in the host's time unit
  double timeAtX0_;
  int half_;  // of a text line
  int third_;
  bool grid_;
  COLORREF textColourBefore_;
  HPEN gridPenHandle_;  // owned by the holders
  GdiObjectSelector gridPen_;
  HPEN axisPenHandle_;
  GdiObjectSelector axisPen_;
};

void TChromRender::DrawAxes(HDC hdc, int flags) {
  Guarded([&] {
    if (View() == nullptr || chrom->channelCount == 0) return;
    const TChannel* current = chrom->channels.At(chrom->curchan());
    if (current == nullptr) return;
    AxesPainter(*this, *current, hdc, flags).Run();
  });
}
