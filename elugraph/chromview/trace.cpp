#include <algorithm>
#include <cstdint>
#include <limits>

#include "elugraph/chromview/channel_pass.h"
#include "elugraph/chromview/chrom_render.h"
#include "elugraph/host/engine.h"
#include "elugraph/trace/each_point.h"

namespace {

// Draws one trace sample by sample and leaves the incremental marks in the channel record.
class PerPixelTrace {
 public:
  PerPixelTrace(ChannelPass& pass, const GetTime& time) : pass_(pass), time_(time) {}

  void Draw(bool exact) {
    const double before = pass_.startIndex - 1;
    const int first = before > 0 ? TruncToInt32(before) : 0;
    const int firstX = X(first);
    (*pass_.pool)(firstX, pass_.yval.Pixel(first));
    const double samplesPerPixel = pass_.timePerPixel / pass_.period;
    if (samplesPerPixel <= 1) {
      DrawSamples(firstX);
    } else if (samplesPerPixel > 1 && !exact && pass_.channel->times == nullptr) {
      DrawOnePerPixel(samplesPerPixel);
    } else {
      DrawEnvelope();
    }
    pass_.pool->Draw();
  }

 private:
  int X(int index) const {
    return TruncToInt32(time_.SampleTime(index) / pass_.timePerPixel + pass_.x0);
  }

  // At most one sample per pixel.
  void DrawSamples(int x) {
    for (int i = pass_.FirstSample(); i < pass_.count; ++i) {
      const int before = x;
      x = X(i);
      if (x != before) (*pass_.pool)(x, pass_.yval.Pixel(i));
      if (x > pass_.xRight) break;
    }
    Mark(pass_.count, x);
  }

  // Every pixel gets the sample at its place.
  void DrawOnePerPixel(double samplesPerPixel) {
    std::int64_t x = pass_.xLeft;
    double sample = pass_.startIndex;
    while (x <= pass_.xRight && TruncToInt32(sample) < pass_.count) {
      (*pass_.pool)(static_cast<int>(x), pass_.yval.Pixel(TruncToInt32(sample)));
      ++x;
      sample += samplesPerPixel;
    }
    Mark(std::max<LONG>(pass_.lastDrawn, TruncToInt32(sample - samplesPerPixel + 1)),
         std::max(pass_.xLeft, static_cast<int>(x - 1)));
  }

  // Every pixel gets a vertical line over the range of its samples, entered and left half-way.
  void DrawEnvelope() {
    constexpr LONG kLargest = std::numeric_limits<LONG>::max();
    constexpr LONG kSmallest = std::numeric_limits<LONG>::min();
    LONG min = kLargest;
    LONG max = kSmallest;
    int lastX = -1;
    LONG last = pass_.lastDrawn;
    for (int i = pass_.FirstSample(); i < pass_.count; ++i) {
      min = std::min(min, pass_.data[i]);
      max = std::max(max, pass_.data[i]);
      const int x = X(i);
      if (x > lastX) {
        const int yMax = TruncToInt32(pass_.yval.ToY(max, i));
        const int yMin = TruncToInt32(pass_.yval.ToY(min, i));
        const int middle = static_cast<int>((std::int64_t{yMax} + yMin) / 2);
        for (const int y : {middle, yMin, yMax, middle}) (*pass_.pool)(x, y);
        min = kLargest;
        max = kSmallest;
        lastX = x;
        last = i;
      }
      if (x > pass_.xRight) break;
    }
    Mark(std::max(pass_.lastDrawn, last), lastX);
  }

  void Mark(LONG index, LONG x) {
    pass_.channel->lastDrawnIndex = index;
    pass_.channel->lastDrawnX = x;
  }

  ChannelPass& pass_;
  const GetTime& time_;
};

}  // namespace

void TChromRender::drawTrace(ChannelPass& pass, HDC hdc, RECT& rect) {
  const THoldWindow& view = *View();
  const bool exact = (view.flags & THoldWindow::kExact) != 0;
  const bool perPixel = (view.flags & THoldWindow::kPerPixel) != 0 && !exact;
  const bool developer = developer_access();
  GetTime time = pass.Mapping(view);
  if (developer || !perPixel) {
    EachPoint reducer(*pass.pool, pass.yval, time, pass.lastDrawn, pass.x0, rect.right, nullptr,
                      nullptr);
    reducer.Draw(TruncToInt32(pass.timeLeft * 1000), 1, pass.data, pass.count, exact, 0, nullptr);
  }
  GdiObjectSlot overlay(hdc, OBJ_PEN);
  if (developer) overlay.Set(CreatePen(pass.channel->penStyle, pass.penWidth, RGB(255, 0, 0)));
  if (developer || perPixel) PerPixelTrace(pass, time).Draw(exact);
}
