#include <algorithm>

#include "elugraph/chromview/channel_pass.h"
#include "elugraph/chromview/chrom_render.h"
#include "elugraph/chromview/markers.h"
#include "elugraph/chromview/peak_label.h"
#include "elugraph/trace/each_point.h"
#include "elugraph/trace/poly_gon_fill_pool.h"

namespace {

constexpr LONG kHighestY = -16385;
constexpr LONG kLowestY = 16382;

COLORREF Mean(COLORREF a, COLORREF b) {
  const auto mean = [](int x, int y) { return static_cast<BYTE>((x + y) / 2); };
  return RGB(mean(GetRValue(a), GetRValue(b)), mean(GetGValue(a), GetGValue(b)),
             mean(GetBValue(a), GetBValue(b)));
}

// Device positions of one peak.
struct PeakPlace {
  int xStart, xApex, xEnd;
  int yStart, yApex, yEnd;  // of the trace
  int yBaselineStart, yBaselineEnd;
};

}  // namespace

// Draws the peaks of one channel. A mark outside the samples has the y of the nearest sample.
class TChromRender::PeakPainter {
 public:
  PeakPainter(TChromRender& render, ChannelPass& pass, HDC hdc, RECT& rect)
      : render_(render),
        view_(*render.View()),
        chrom_(*render.chrom.get()),
        pass_(pass),
        hdc_(hdc),
        rect_(rect),
        zeroY_(render.getoffset(pass.channelIndex) + pass.channel->zero * pass.yval.scale) {}

  void Run() {
    chrom_.basecalc(pass_.channelIndex);
    const int first = pass_.FirstSample();
    const double timeRight =
        (static_cast<double>(pass_.xRight) - pass_.x0) * pass_.timePerPixel + view_.t0;
    const int last = TruncToInt32(timeRight / pass_.period);
    for (int number = 1; number <= chrom_.peakCount; ++number) {
      const PeakRecord* peak = PeakAt(number);
      if (peak == nullptr) continue;
      if (peak->start > last) break;
      if (peak->end >= first) DrawPeak(number, *peak);
    }
  }

 private:
  const PeakRecord* PeakAt(int number) const { return chrom_.peaks.At(number - 1); }

  int Y(LONG value, LONG index) const {
    LONG y = TruncToInt32(zeroY_ - value * pass_.yval.scale);
    if (pass_.drift) {
      y = TruncToInt32(y + (index * pass_.slope + pass_.intercept) * pass_.yval.scale);
    }
    return std::clamp(y, kHighestY, kLowestY);
  }
  int YOfSample(LONG index) const {
    return Y(pass_.data[std::clamp(index, 0, pass_.count - 1)], index);
  }

  void DrawPeak(int number, const PeakRecord& peak) {
    const PeakPlace place = {render_.xposi(peak.start),
                             render_.xposi(peak.apex),
                             render_.xposi(peak.end),
                             YOfSample(peak.start),
                             YOfSample(peak.apex),
                             YOfSample(peak.end),
                             Y(peak.baselineStart, peak.start),
                             Y(peak.baselineEnd, peak.end)};
    const bool selected = number == render_.selectedPeak;
    if ((view_.flags & THoldWindow::kBaselines) != 0 && !selected) {
      DrawBaseline(number, peak, place);
    }
    const bool inRange = number >= render_.selectedPeak && number <= render_.selectedPeakEnd;
    if (place.xEnd != place.xStart && (selected || inRange)) FillArea(peak, place);
    if (render_.markMode == 2 || (render_.markMode == 1 && selected)) DrawArrows(place);
    if (pass_.period <= pass_.timePerPixel) DrawApexLine(place);
    DrawLabel(number, place);
  }

  // Down from the trace, along the baseline, and up again. A boundary that two peaks share gets no
  // tick from either.
  void DrawBaseline(int number, const PeakRecord& peak, const PeakPlace& at) {
    const PeakRecord* before = number > 1 ? PeakAt(number - 1) : nullptr;
    const PeakRecord* after = number < chrom_.peakCount ? PeakAt(number + 1) : nullptr;
    const bool sharedStart = before != nullptr && before->end == peak.start;
    const bool sharedEnd = after != nullptr && peak.end == after->start;
    const bool ticks = (view_.flags & THoldWindow::kPeakTicks) != 0;
    const bool ownColour = view_.colours.baseline() != view_.colours.back();
    if (ownColour) SelectObject(hdc_, pass_.baselineHandle);
    MoveToEx(hdc_, at.xStart, at.yStart, nullptr);
    LineTo(hdc_, at.xStart, at.yBaselineStart);
    if (ticks && !sharedStart) Tick(at.xStart, at.yBaselineStart, 3);
    LineTo(hdc_, at.xEnd, at.yBaselineEnd);
    if (ticks && !sharedEnd) Tick(at.xEnd, at.yBaselineEnd, 2);
    LineTo(hdc_, at.xEnd, at.yEnd);
    if (ownColour) SelectObject(hdc_, pass_.traceHandle);
  }
  void Tick(int x, int y, int kind) {
    DrawTickMarker(hdc_, x, y, kind, render_.charWidth, render_.charHeight);
  }

  // The area between trace and baseline, in the same columns as the trace.
  void FillArea(const PeakRecord& peak, const PeakPlace& at) {
    GetTime time = pass_.Mapping(view_);
    PolyGonFillPool outline(PoolCapacity(rect_.right, 18), &rect_, hdc_);
    EachPoint reducer(outline, pass_.yval, time, 0, pass_.x0, rect_.right, nullptr, nullptr);
    const int count = peak.end < pass_.count ? peak.end + 1 : pass_.count;
    reducer.Draw(TruncToInt32(pass_.timeLeft * 1000), 1, pass_.data, count,
                 (view_.flags & THoldWindow::kExact) != 0, peak.start, nullptr);
    if (outline.count >= 2) {
      outline(outline.points[outline.count - 1].x, at.yBaselineEnd);
      outline(outline.points[0].x, at.yBaselineStart);
    }
    const GdiObjectSelector brush(hdc_,
                                  CreateSolidBrush(Mean(render_.Background(), pass_.traceColour)));
    outline.Fill();
  }

  void DrawArrows(const PeakPlace& at) {
    const SIZE size{render_.charWidth, render_.charHeight};
    render_.DrawArrowMarker(hdc_, at.xStart, at.yStart, 4, size);
    render_.DrawArrowMarker(hdc_, at.xApex, at.yApex, 6, size);
    render_.DrawArrowMarker(hdc_, at.xEnd, at.yEnd, 5, size);
  }

  // From the trace at the apex's column to the apex itself, which may lie between columns.
  void DrawApexLine(const PeakPlace& at) {
    const double column = static_cast<double>(at.xApex) - pass_.xLeft;
    const double index = column * pass_.timePerPixel / pass_.period + pass_.startIndex;
    if (!(index < pass_.channel->apexLimit)) return;
    const int sample = TruncToInt32(index);
    if (sample < 0 || sample >= pass_.count) return;
    MoveToEx(hdc_, at.xApex, pass_.yval.Pixel(sample), nullptr);
    LineTo(hdc_, at.xApex, at.yApex);
  }

  void DrawLabel(int number, const PeakPlace& at) {
    const LONG third = render_.charHeight / 3;
    const LONG twoThirds = 2 * render_.charHeight / 3;
    const bool all = (view_.flags & THoldWindow::kLabelAll) != 0;
    if (pass_.channelIndex != chrom_.curchan()) return;
    if ((view_.flags & THoldWindow::kLabelMode) == 0) return;
    if (!(at.yApex > 4 * third || all)) return;
    const PeakLabel label(&chrom_, number);
    SelectObject(hdc_, label.Vertical() ? render_.labelFont : render_.font);
    // 1: above the apex, −1: below.
    int direction = 2 * at.yApex <= at.yBaselineStart + at.yBaselineEnd ? 1 : -1;
    LONG y = at.yApex;
    LONG yText = y - direction * twoThirds;
    if (all) {
      SIZE extent{0, 0};
      GetTextExtentPoint32A(hdc_, label.Text(), label.Length(), &extent);
      if (y < 0 || yText < label.Height(extent)) {
        direction = -1;
        y = 0;
        yText = twoThirds;
      } else if (y > render_.height || yText > render_.height) {
        direction = 1;
        y = render_.height;
        yText = render_.height - twoThirds;
      }
    }
    MoveToEx(hdc_, at.xApex, y - direction * third, nullptr);
    LineTo(hdc_, at.xApex, y - 2 * third * direction);
    const bool above = direction == 1;
    LONG x = at.xApex;
    if (label.Vertical()) {
      SetTextAlign(hdc_, TA_BOTTOM | (above ? TA_LEFT : TA_RIGHT));
      x += render_.charHeight / 2;
    } else {
      SetTextAlign(hdc_, TA_CENTER | (above ? TA_BOTTOM : TA_TOP));
    }
    TextOutA(hdc_, x, yText, label.Text(), label.Length());
  }

  TChromRender& render_;
  const THoldWindow& view_;
  chromatogram& chrom_;
  ChannelPass& pass_;
  HDC hdc_;
  RECT& rect_;
  double zeroY_;  // y of the raw value 0
};

void TChromRender::drawPeaks(ChannelPass& pass, HDC hdc, RECT& rect) {
  PeakPainter(*this, pass, hdc, rect).Run();
}
