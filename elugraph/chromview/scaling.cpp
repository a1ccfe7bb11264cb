#include <cmath>
#include <cstdlib>

#include "elugraph/chromview/chrom_render.h"
#include "elugraph/chromview/guard.h"
#include "elugraph/trace/arithmetic.h"

namespace {

double AtLeastOne(LONG pixels) { return pixels > 1 ? pixels : 1; }

}  // namespace

int TChromRender::margin() { return 2 * charHeight; }

void TChromRender::scalewindow() {
  Guarded([this] {
    if (!chrom || chromatogram::pIs(chrom.get()) == nullptr) return;
    THoldWindow* view = chrom->window;
    if (view == nullptr) {
      rightReserve = 0;
      return;
    }
    const int strip = (view->flags & THoldWindow::kSignalStrip) != 0 ? 10 * charWidth : 0;
    rightReserve = strip;
    view->x0 = strip;
    view->plotBottom = height - 4 * charHeight / 3;
    view->plotWidth = width - view->x0;
    view->plotHeight = view->plotBottom - margin();
    const bool tall = view->plotHeight > 0 && view->fullScale != 0;
    view->unitsPerPixel = tall ? view->fullScale / view->plotHeight : 1.0;
    const int timeWidth = view->plotWidth - rightReserve;
    const bool wide = timeWidth > 0 && view->t1 != view->t0;
    view->timePerPixel = wide ? (view->t1 - view->t0) / timeWidth : 1.0;
    if (!(view->channelStep > 0)) {
      view->channelStep = charHeight / AtLeastOne(view->plotHeight);
    }
    view->zeroLift = TruncToInt32(view->plotHeight * view->zeroFraction);
  });
}

void TChromRender::zero(LONG index) {
  THoldWindow* view = View();
  if (view == nullptr) return;
  view->zeroLift = TruncToInt32(charHeight - view->plotHeight * view->channelStep);
  view->zeroFraction = view->zeroLift / AtLeastOne(view->plotHeight);
  chrom->zero(index);
}

int TChromRender::getoffset(int channel) {
  const THoldWindow* view = View();
  if (view == nullptr) return 0;
  const double stepsUp = std::abs(chrom->channelCount - 1.0 - channel);
  return TruncToInt32(static_cast<double>(view->plotBottom) - view->zeroLift -
                      view->plotHeight * view->channelStep * stepsUp);
}

int TChromRender::xpost(double t) {
  const THoldWindow* view = View();
  if (view == nullptr) return 0;
  const double timePerPixel = view->timePerPixel != 0 ? view->timePerPixel : 1.0;
  return TruncToInt32(std::floor(view->x0 + (t - view->t0) / timePerPixel + 0.5));
}

int TChromRender::xposi(LONG index) {
  return View() != nullptr ? xpost(static_cast<double>(chrom->sampleInterval) * index) : 0;
}

void TChromRender::xsetfull() {
  Guarded([this] { FitTime(); });
}

void TChromRender::ysetfull(HDC hdc) {
  Guarded([&] { FitSignal(hdc); });
}

void TChromRender::xysetfull(HDC hdc) {
  xsetfull();
  ysetfull(hdc);
}

void TChromRender::FitTime() {
  if (View() == nullptr || !chrom->bHasRawData()) return;
  View()->t0 = 0.0;
  View()->t1 = chrom->ActualDuration();
  scalewindow();
}
