#include <cmath>
#include <cstring>
#include <vector>

#include "elugraph/chromview/channel_pass.h"
#include "elugraph/chromview/chrom_render.h"
#include "elugraph/chromview/host_text.h"
#include "elugraph/trace/each_point.h"

namespace {

constexpr double kMinAuxSpan = 1e-100;
constexpr LONG kNoRow = -1000;
constexpr int kColourSlots = 8;

bool CanBeDrawn(const TChannel* channel) {
  return channel != nullptr && channel->visible != 0 && channel->samples != nullptr &&
         channel->times != nullptr && channel->sampleCount >= 2;
}

// The row of a name at `y`, unless one of the `earlier` rows lies within one text line of it.
LONG FreeRow(const std::vector<LONG>& rows, LONG earlier, LONG y, LONG lineHeight) {
  for (LONG j = 0; j < earlier; ++j) {
    if (rows[j] - lineHeight < y && y < rows[j] + lineHeight) return kNoRow;
  }
  return y;
}

}  // namespace

double TChromRender::dAuxScale() {
  const THoldWindow* view = View();
  if (view == nullptr || view->plotHeight <= 0) return 1.0;
  const double scale = std::abs((view->auxMax - view->auxMin) / view->plotHeight);
  return scale >= kMinAuxSpan ? scale : 1.0;
}

int TChromRender::AuxZero() {
  const THoldWindow* view = View();
  if (view == nullptr) return 0;
  const double range = view->auxMax - view->auxMin;
  const double bottom = range > 0 ? view->auxMin : view->auxMax;
  const double span = std::abs(range);
  if (!(span >= kMinAuxSpan)) return 0;
  return TruncToInt32(std::floor(view->plotHeight * (bottom / span) + 0.5));
}

void TChromRender::DrawAuxTrace(HDC hdc, bool /*erase*/, RECT& rect, int /*flags*/) {
  if (View() == nullptr || chrom->auxChannels.count <= 0) return;
  const THoldWindow& view = *View();
  PolyLinePool pool(PoolCapacity(rect.right, 16), &rect, hdc);
  std::vector<LONG> rows(static_cast<std::size_t>(chrom->auxChannels.Size()), 0);
  SetTextAlign(hdc, TA_LEFT | TA_TOP);
  SelectObject(hdc, font);
  int drawn = 0;
  for (LONG i = 0; i < chrom->auxChannels.Size(); ++i) {
    TChannel* channel = chrom->auxChannels.At(i);
    if (!CanBeDrawn(channel)) continue;
    ++drawn;
    GetTime time(channel, view.t0, view.t1 - view.t0, static_cast<ULONG>(width - 2 * rightReserve),
                 channel->samplePeriod, view.timePerPixel);
    YVAL yval(channel, view.plotBottom + AuxZero(), dAuxScale(), false, 0.0, 0.0);
    channel->lastDrawnIndex = 1;
    EachPoint reducer(pool, yval, time, channel->lastDrawnIndex, rightReserve, rect.right, nullptr,
                      nullptr);
    const int slot = i % kColourSlots;
    const COLORREF colour = view.auxColours.chan(slot, ChromColor::none);
    SetTextColor(hdc, colour);
    const GdiObjectSelector pen(
        hdc, CreatePen(channel->penStyle, PenWidth(view.auxThickness[slot], charHeight), colour));
    POINT edge{0, kNoRow};
    reducer.Draw(0, 1, channel->samples, channel->sampleCount, true, 0, &edge);

    const FixedText name(channel->name);
    const int length = static_cast<int>(std::strlen(name.c_str()));
    SIZE extent{0, 0};
    GetTextExtentPoint32A(hdc, name.c_str(), length, &extent);
    const int x = width - extent.cx - rightReserve - charWidth / 2;
    if ((view.flags & THoldWindow::kNameList) != 0) {
      TextOutA(hdc, x, (drawn + 1) * charHeight + charHeight / 3, name.c_str(), length);
      continue;
    }
    rows[i] = FreeRow(rows, i, edge.y, charHeight);
    if (rows[i] > 0) TextOutA(hdc, x, rows[i], name.c_str(), length);
  }
}
