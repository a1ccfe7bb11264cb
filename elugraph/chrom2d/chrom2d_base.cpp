// The window: life, messages and commands.
#include "elugraph/chrom2d/chrom2d_base.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

#include "elugraph/chrom2d/color_dlg.h"

namespace {

constexpr UINT kChanged = 0x300;  // EN_CHANGE, whatever the control
constexpr int kClosedWithOk = 1;
constexpr WORD kMinChannels = 3;

LOGFONTA WindowFont() {
  LOGFONTA font{};
  font.lfHeight = 15;
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfOutPrecision = OUT_TT_ONLY_PRECIS;
  font.lfQuality = ANTIALIASED_QUALITY;
  constexpr char kFace[] = "Times New Roman";
  static_assert(sizeof kFace <= sizeof font.lfFaceName);
  std::memcpy(font.lfFaceName, kFace, sizeof kFace);
  return font;
}

// All map objects; never destroyed, as objects may outlive the program's own.
std::vector<const TChrom2DBase*>& LiveMaps() {
  static auto* const maps = new std::vector<const TChrom2DBase*>;
  return *maps;
}

// The map may have ended before its dialog did.
void OnColorDialogClosed(int result, void* context) {
  auto* const owner = static_cast<TChrom2DBase*>(context);
  if (result == kClosedWithOk && TChrom2DBase::IsLive(owner)) owner->Rebuild();
}

void OpenColorDialog(TChrom2DBase* owner) try {
  auto* const dialog = new (std::nothrow) TChrom2DColorDlg(owner);
  if (dialog == nullptr) return;
  // Without a window the dialog has ended already.
  if (const HWND window = dialog->Create(-1)) {
    PostExecute(window, OnColorDialogClosed, owner, true);
  }
} catch (...) {  // the host's: no dialog
}

}  // namespace

COLORREF TChrom2DBase::bk_col = RGB(0xC0, 0xC0, 0xC0);
COLORREF TChrom2DBase::axis_col = RGB(0, 0, 0);

TChrom2DBase::TChrom2DBase(HWND parent, const ResIdCheck& dialogTemplate, chromatogram* run,
                           HWND* place)
    : TLastPaintDlg(parent, dialogTemplate, place), chrom(run), heightMap(nullptr) {
  LiveMaps().push_back(this);
  const LOGFONTA description = WindowFont();
  font = CreateFontIndirectA(&description);
  if (heightMap.Set(run)) InitRanges();
}

TChrom2DBase::~TChrom2DBase() {
  std::erase(LiveMaps(), this);
  DeleteObject(font);
}

bool TChrom2DBase::IsLive(const TChrom2DBase* map) {
  const std::vector<const TChrom2DBase*>& maps = LiveMaps();
  return map != nullptr && std::find(maps.begin(), maps.end(), map) != maps.end();
}

bool TChrom2DBase::InitRanges() {
  try {
    if (chromatogram::pIs(chrom.get()) == nullptr || chrom->channelCount < kMinChannels) {
      return false;
    }
    const double end = chrom->sampleCount >= 2
                           ? (chrom->sampleCount - 1.0) * static_cast<double>(chrom->sampleInterval)
                           : chrom->ActualDuration();
    if (!heightMap.GetWaves(&waveFrom, &waveTo)) return false;
    timeFrom = 0.0;
    timeTo = end;
    return true;
  } catch (...) {  // the host's
    return false;
  }
}

LRESULT TChrom2DBase::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_TIMER && wParam == kResizeTimer) {
    if (resizePending) {
      KillTimer(hwnd, kResizeTimer);
      Rebuild();
      resizePending = false;
    }
    return 0;
  }
  if (message == WM_WINDOWPOSCHANGED && lParam != 0) {
    const UINT flags = reinterpret_cast<const WINDOWPOS*>(lParam)->flags;
    if ((flags & SWP_FRAMECHANGED) != 0 || (flags & SWP_NOSIZE) == 0) {
      resizePending = true;
      // Starts a running timer anew.
      SetTimer(hwnd, kResizeTimer, kResizePauseMs, nullptr);
    }
  }
  return TLastPaintDlg::WindowProc(message, wParam, lParam);
}

LRESULT TChrom2DBase::EvCommand(UINT id, HWND control, UINT notification) {
  if (notification == kChanged) {
    EraseBMP();
    InvalidateRect(hwnd, nullptr, FALSE);
  }
  if (id == kColorCommand) OpenColorDialog(this);
  return TORVDlg::EvCommand(id, control, notification);
}

void TChrom2DBase::SetupWindow() { TORVDlg::SetupWindow(); }

void TChrom2DBase::InvalidateAll(const RECT* rect) {
  Invalidate(rect);
  InvalidateRect(hwnd, nullptr, FALSE);
}

void TChrom2DBase::Rebuild() {
  picture.reset();
  InvalidateAll(nullptr);
}
