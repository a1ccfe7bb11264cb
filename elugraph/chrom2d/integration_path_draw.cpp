// Drawing of the path and the status label.
#include <algorithm>
#include <cstring>

#include "elugraph/chrom2d/integration_path_dlg.h"

namespace {

constexpr double kMinWaveSpan = 1e-27;
constexpr int kMarkRadius = 3;
constexpr unsigned kTimeLabel = 1050000;     // takes a time and its unit
constexpr unsigned kChannelLabel = 1050005;  // takes a channel

LONG TextHeight(HDC hdc) {
  SIZE extent{0, 0};
  GetTextExtentPoint32A(hdc, "0", 1, &extent);
  return extent.cy;
}

void Mark(HDC hdc, int x, int y) {
  Ellipse(hdc, x - kMarkRadius, y - kMarkRadius, x + kMarkRadius + 1, y + kMarkRadius + 1);
}

void Write(HDC hdc, POINT at, const char* text) {
  SetTextAlign(hdc, TA_LEFT | TA_TOP);
  TextOutA(hdc, at.x, at.y, text, static_cast<int>(std::strlen(text)));
}

}  // namespace

void TIntegrationPathDlg::axis(HDC hdc, const RECT& rect) {
  TChrom2DBase::axis(hdc, rect);
  const int y = rect.bottom - stripHeight - TextHeight(hdc) / 2;
  MoveToEx(hdc, rect.left, y, nullptr);
  LineTo(hdc, rect.right, y);
  try {
    DrawStatus(hdc, rect);
  } catch (...) {  // the host's
  }
  LOGBRUSH hollow{};
  hollow.lbStyle = BS_HOLLOW;
  const HBRUSH brush = CreateBrushIndirect(&hollow);
  const HGDIOBJ before = SelectObject(hdc, brush);
  DrawPath(hdc, rect, true);
  if (before != nullptr) SelectObject(hdc, before);
  if (brush != nullptr) DeleteObject(brush);
}

void TIntegrationPathDlg::DrawStatus(HDC hdc, const RECT& rect) {
  if (activeHandle < 0 || !chrom) return;
  const POINT at{mapRect.left, rect.bottom - stripHeight};
  const int k = activeHandle / 3;
  const SIPathItem* const item = edit.Item(k);
  if (item == nullptr) return;
  if (activeHandle % 3 == 0) {
    const char* const format = muiGetString(kTimeLabel);
    if (k >= edit.count - 1 || format == nullptr) return;
    const double time = chrom->units(dragPos >= 0 ? X2Time(dragPos) : item->endTime);
    const char* const unit = chrom->window != nullptr ? chrom->window->xunitsTxt() : "";
    Write(hdc, at, PrintBuffer<100>(format, time, unit).text);
  } else {
    const int stored = activeHandle % 3 == 1 ? item->lowChannel : item->highChannel;
    const int channel = dragPos >= 0 ? GetMapChannel(dragPos) : stored;
    const char* const format = muiGetString(kChannelLabel);
    if (channel < 0 || channel >= chrom->channelCount || format == nullptr) return;
    const TChannel* const record = chrom->channels.At(channel);
    if (record == nullptr) return;
    // The record begins with the name, which may fill its field.
    char name[sizeof record->name + 1] = {};
    std::memcpy(name, record->name, sizeof record->name);
    Write(hdc, at, PrintBuffer<100>(format, name).text);
  }
}

void TIntegrationPathDlg::DrawPath(HDC hdc, const RECT&, bool lines) {
  if (!(timeStep <= timeTo - timeFrom && waveTo - waveFrom > kMinWaveSpan)) return;
  int left = mapRect.left - 1;
  for (int i = 0; i < edit.count; ++i) {
    const BoundaryPlace end = PlaceOfBoundary(i);
    if (end.visible && lines) {
      HandleLine(hdc, end.x, mapRect.top, end.x, mapRect.bottom, 3 * i == activeHandle);
    }
    const int right = std::min<int>(end.x, mapRect.right);
    if (right > left) {
      DrawBand(hdc, i, left, right, lines);
      left = right;
    }
    if (right >= mapRect.right) break;
  }
}

int TIntegrationPathDlg::DraggedHandle() const {
  return activeHandle >= 0 && dragPos > 0 ? activeHandle : -1;
}

// What a dragged boundary passes is shown as it will be when it is dropped there: boundaries on its
// way are hidden, segments on its left end at it.
TIntegrationPathDlg::BoundaryPlace TIntegrationPathDlg::PlaceOfBoundary(int i) {
  const int dragged = DraggedHandle();
  if (3 * i == dragged) return {dragPos, dragPos < mapRect.right};
  const int x = Time2X(edit.items[i].endTime);
  if (dragged >= 0 && dragged % 3 == 0) {
    if (i < dragged / 3 && x >= dragPos) return {dragPos, false};
    if (i > dragged / 3 && x < dragPos) return {x, false};
  }
  return {x, x < mapRect.right};
}

int TIntegrationPathDlg::RowOf(const WaveEntry* line, int code) {
  if (line == nullptr) return -1;
  const int y = code == DraggedHandle() ? dragPos : ChanV2Y(line->wavelength);
  return y >= mapRect.top && y < mapRect.bottom ? y : -1;
}

void TIntegrationPathDlg::DrawBand(HDC hdc, int i, int left, int right, bool lines) {
  const SIPathItem& item = edit.items[i];
  const int low = RowOf(LowLine(item), 3 * i + 1);
  const int high = RowOf(HighLine(item), 3 * i + 2);
  if (lines) {
    if (low >= 0) HandleLine(hdc, left, low, right, low, 3 * i + 1 == activeHandle);
    if (high >= 0) HandleLine(hdc, left, high, right, high, 3 * i + 2 == activeHandle);
  } else {
    ShadeRect(hdc, left + 1, std::max(low, high) + 1, right, mapRect.bottom);
    ShadeRect(hdc, left + 1, mapRect.top, right, std::min(low, high));
  }
}

void TIntegrationPathDlg::HandleLine(HDC hdc, int xa, int ya, int xb, int yb, bool marked) {
  MoveToEx(hdc, xa, ya, nullptr);
  LineTo(hdc, xb, yb);
  if (!marked) return;
  Mark(hdc, xa, ya);
  Mark(hdc, xb, yb);
}
