#include <algorithm>
#include <cmath>

#include "elugraph/chromview/channel_pass.h"
#include "elugraph/chromview/chrom_render.h"

namespace {

// Seconds per sample: the channel's own, or the chromatogram's where the channel has none.
double PeriodOf(TChannel& channel, const chromatogram& chrom) {
  const float own = channel.GetCyctimeRT();
  return own > 0 ? own : chrom.sampleInterval;
}

// The sample just before the first one at or after the view's start.
double FirstOfTable(const ChannelPass& pass, const THoldWindow& view) {
  const GetTime time = pass.Mapping(view);
  int index = 0;
  while (index + 1 < pass.count && time.TableTime(index + 1) < 0) ++index;
  return index;
}

}  // namespace

// A channel without a time table and without a positive period has nothing to draw.
bool TChromRender::channelRange(ChannelPass& pass, HDC /*hdc*/, RECT& rect, int flags) {
  const THoldWindow& view = *View();
  TChannel& channel = *pass.channel;
  pass.startPeriod = PeriodOf(channel, *chrom.get());
  if (chrom->state == 5) channel.UpdateCyctimeRT();
  pass.period = PeriodOf(channel, *chrom.get());
  pass.timePerPixel = view.timePerPixel;
  pass.x0 = view.x0;
  pass.plotWidth = view.plotWidth - rightReserve;
  if (!(pass.period > 0) && channel.times == nullptr) return false;

  const double xOfLast = ((pass.count - 1.0) * pass.period - view.t0) / pass.timePerPixel + pass.x0;
  const auto timeAt = [&](int x) {
    return (static_cast<double>(x) - pass.x0) * pass.timePerPixel + view.t0;
  };
  if ((flags & kPassIncremental) != 0) {
    const bool goesOn = channel.lastDrawnX >= pass.x0;
    pass.xRight = TruncToInt32(xOfLast);
    pass.xLeft = goesOn ? channel.lastDrawnX : pass.x0;
    pass.startIndex = goesOn ? pass.lastDrawn - 1.0 : view.t0 / pass.startPeriod;
    pass.timeLeft = timeAt(pass.xLeft);
  } else {
    channel.lastDrawnX = pass.x0;
    if ((flags & kPassWholeWidth) != 0) {
      pass.xRight = width;
      pass.xLeft = pass.x0;
    } else {
      // A NaN, which compares with nothing, leaves the rectangle's edge.
      pass.xRight = TruncToInt32(std::min(static_cast<double>(rect.right), xOfLast));
      pass.xLeft = std::max<int>(pass.x0, rect.left);
    }
    pass.timeLeft = timeAt(pass.xLeft);
    pass.startIndex = pass.timeLeft / pass.startPeriod;
    if (pass.startIndex < 0) pass.startIndex = 0;
    if (channel.times != nullptr) pass.startIndex = FirstOfTable(pass, view);
  }
  return pass.startIndex >= 0 && pass.FirstSample() < pass.count;
}
