// The mouse: handles under it, cursors, drags.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "elugraph/chrom2d/editor_resources.h"
#include "elugraph/chrom2d/integration_path_dlg.h"
#include "elugraph/chrom2d/path_moves.h"

namespace {

constexpr UINT kMoveOnly = SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
static_assert(kMoveOnly == 0x215);

// Into first … end − 1, which is not empty.
int Within(int position, int first, int end) { return std::clamp(position, first, end - 1); }

double Snapped(double time, double step) { return std::floor(time / step + 0.5) * step; }

}  // namespace

LRESULT TIntegrationPathDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  const int x = GET_X_LPARAM(lParam);
  const int y = GET_Y_LPARAM(lParam);
  switch (message) {
    case WM_RBUTTONDOWN:
      activeHandle = AddBoundary(x, y);
      dragPos = -1;  // selected, not dragged
      cursor = CursorFor(HitTest(x, y));
      InvalidateAll(nullptr);
      return 0;
    case WM_LBUTTONDOWN:
      PressLeft(x, y);
      break;
    case WM_LBUTTONUP:
      ReleaseLeft(x, y);
      break;
    case WM_MOUSEMOVE:
      MoveMouse(x, y);
      break;
    case WM_SETCURSOR:
      if (reinterpret_cast<HWND>(wParam) == hwnd && LOWORD(lParam) == HTCLIENT) {
        SetCursor(cursor);
        return TRUE;
      }
      break;
    case WM_WINDOWPOSCHANGED:
      if (lParam != 0 && (reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_NOSIZE) == 0) {
        PlaceButtons();
      }
      break;
    default:
      break;
  }
  return TChrom2DBase::WindowProc(message, wParam, lParam);
}

void TIntegrationPathDlg::PressLeft(int x, int y) {
  const int hit = HitTest(x, y);
  if (hit < 0) {
    activeHandle = -1;
    dragPos = -1;
  } else {
    activeHandle = hit;
    dragPos = hit % 3 == 0 ? x : y;
    cursor = CursorFor(hit);
    SetCapture(hwnd);
  }
  InvalidateAll(nullptr);
}

void TIntegrationPathDlg::ReleaseLeft(int x, int y) {
  DropHandle(x, y);
  dragPos = -1;
  if (GetCapture() == hwnd) ReleaseCapture();
  InvalidateAll(nullptr);
}

void TIntegrationPathDlg::MoveMouse(int x, int y) {
  if (!Dragging()) {
    cursor = CursorFor(HitTest(x, y));
    return;
  }
  // A window too small for a map leaves the line where it was.
  if (activeHandle % 3 == 0) {
    if (mapRect.left < mapRect.right) dragPos = Within(x, mapRect.left, mapRect.right);
  } else {
    if (mapRect.top < mapRect.bottom) dragPos = Within(y, mapRect.top, mapRect.bottom);
  }
  InvalidateAll(nullptr);
}

void TIntegrationPathDlg::PlaceButtons() {
  if (!buttonsKnown) return;
  RECT client{0, 0, 0, 0};
  GetClientRect(hwnd, &client);
  const int y = client.bottom - stripHeight;
  SetWindowPos(GetDlgItem(hwnd, IDOK), nullptr, client.right - okFromRight, y, 0, 0, kMoveOnly);
  SetWindowPos(GetDlgItem(hwnd, IDCANCEL), nullptr, client.right - cancelFromRight, y, 0, 0,
               kMoveOnly);
}

// ---- handles ----------------------------------------------------------------------------------

bool TIntegrationPathDlg::OnMap(int x, int y) const {
  return x >= mapRect.left && x < mapRect.right && y >= mapRect.top && y < mapRect.bottom;
}

const WaveEntry* TIntegrationPathDlg::LowLine(const SIPathItem& item) const {
  const int count = heightMap.WaveCount();
  for (int i = 0; i < count; ++i) {
    const WaveEntry* const wave = heightMap.Wave(static_cast<WORD>(i));
    if (wave->channel >= item.lowChannel) return wave;
  }
  return nullptr;
}

const WaveEntry* TIntegrationPathDlg::HighLine(const SIPathItem& item) const {
  for (int i = heightMap.WaveCount() - 1; i >= 0; --i) {
    const WaveEntry* const wave = heightMap.Wave(static_cast<WORD>(i));
    if (wave->channel <= item.highChannel) return wave;
  }
  return nullptr;
}

int TIntegrationPathDlg::HitTest(int x, int y) {
  if (!OnMap(x, y)) return kOutside;
  int i = 0;
  for (; i < edit.count - 1; ++i) {
    const int boundary = Time2X(edit.items[i].endTime);
    if (std::abs(boundary - x) <= Editor().dragX) return 3 * i;
    if (boundary >= x) break;
  }
  const SIPathItem* const item = edit.Item(i);
  if (item == nullptr) return kOnMap;
  const auto near = [&](const WaveEntry* line) {
    return line != nullptr && std::abs(ChanV2Y(line->wavelength) - y) <= Editor().dragY;
  };
  if (near(LowLine(*item))) return 3 * i + 1;
  if (near(HighLine(*item))) return 3 * i + 2;
  return kOnMap;
}

HCURSOR TIntegrationPathDlg::CursorFor(int code) const {
  if (code <= kOutside) return savedCursor;
  if (code < 0) return Editor().cross;
  return code % 3 == 0 ? Editor().splitH : Editor().splitV;
}

// ---- changes ----------------------------------------------------------------------------------

int TIntegrationPathDlg::AddBoundary(int x, int y) {
  if (!OnMap(x, y) || mapRect.right - mapRect.left < 2 || !(timeTo > timeFrom)) return -1;
  // Within the run first: its end need not be a multiple of the step, and what lies beyond it would
  // come behind boundaries that end later.
  const double t = std::clamp(Snapped(X2Time(x), timeStep), timeFrom, timeTo);
  const int i = SplitPath(edit, t, chrom ? chrom->channelCount : 0);
  return i < 0 ? -1 : 3 * i;
}

bool TIntegrationPathDlg::DropHandle(int x, int y) {
  if (!Dragging()) return false;
  const int k = activeHandle / 3;
  // Without a map there is no place to drop it.
  if (edit.Item(k) == nullptr || IsRectEmpty(mapRect)) return true;
  if (activeHandle % 3 == 0) {
    DropBoundary(k, Within(x, mapRect.left, mapRect.right));
  } else {
    DropBandLine(k, Within(y, mapRect.top, mapRect.bottom));
  }
  return true;
}

void TIntegrationPathDlg::DropBoundary(int k, int x) {
  const double t = Snapped(X2Time(x), timeStep);
  // The run's interval may be no number.
  if (!std::isfinite(t)) return;
  const int now = MoveBoundary(edit, k, t, timeStep);
  activeHandle = now < 0 ? -1 : 3 * now;
}

void TIntegrationPathDlg::DropBandLine(int k, int y) {
  SIPathItem& item = edit.items[k];
  const bool low = activeHandle % 3 == 1;
  (low ? item.lowChannel : item.highChannel) = GetMapChannel(y);
  if (item.highChannel >= item.lowChannel) return;
  const std::int16_t above = item.lowChannel;
  item.lowChannel = item.highChannel;
  item.highChannel = above;
  activeHandle = 3 * k + (low ? 2 : 1);
}
