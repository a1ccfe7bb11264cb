// The editor's life: opening, layout, acceptance.
#include "elugraph/chrom2d/integration_path_dlg.h"

#include "elugraph/chrom2d/editor_resources.h"
#include "elugraph/chrom2d/path_moves.h"

namespace {

constexpr double kMinStepSec = 0.0001;
constexpr double kMaxStepSec = 1.0;
constexpr double kDefaultStepSec = 0.1;

double TimeStepOf(const chromatogram* chrom) {
  const double interval = chrom != nullptr ? static_cast<double>(chrom->sampleInterval) : 0.0;
  // A NaN is no step either.
  return interval >= kMinStepSec && interval <= kMaxStepSec ? interval : kDefaultStepSec;
}

bool CopyPath(const SIPath& from, SIPath& to) {
  const int count = from.items != nullptr ? from.count : 0;
  if (count > kMaxSegments || !to.Resize(count)) return false;
  for (int i = 0; i < to.count; ++i) to.items[i] = from.items[i];
  return true;
}

// `otherwise` where there is no such control.
POINT TopLeftOf(HWND control, POINT otherwise) {
  RECT place{0, 0, 0, 0};
  return GetWindowRect(control, &place) ? POINT{place.left, place.top} : otherwise;
}

}  // namespace

HWND CallChromatogramIntegrationPathEdit(HWND parent, chromatogram* chrom, SIPath& path) try {
  auto* const dialog = new TIntegrationPathDlg(parent, chrom, path);
  if (!dialog->HasPath()) {
    delete dialog;
    return nullptr;
  }
  // From here on the host ends the object, also where no window can be made.
  return PostExecute(dialog->Create(-1), nullptr, nullptr, true);
} catch (...) {  // no memory, or the host's
  return nullptr;
}

TIntegrationPathDlg::TIntegrationPathDlg(HWND parent, chromatogram* run, SIPath& callersPath)
    : TChrom2DBase(parent, EditorTemplate(), run, nullptr),
      savedCursor(GetCursor()),
      path(callersPath),
      timeStep(TimeStepOf(run)),
      cursor(savedCursor) {
  // A path that cannot be copied must not be replaced by another one.
  if (!CopyPath(path, edit)) return;
  // A run without a duration has no end to cut at.
  if (timeTo > timeFrom) CutPath(edit, timeTo);
  if (edit.count == 0) AddWholeRun(edit, run != nullptr ? run->channelCount : 0);
}

void TIntegrationPathDlg::SetupWindow() {
  TChrom2DBase::SetupWindow();
  RECT client{0, 0, 0, 0};
  GetClientRect(hwnd, &client);
  POINT corner{client.right, client.bottom};
  ClientToScreen(hwnd, &corner);
  const POINT ok = TopLeftOf(GetDlgItem(hwnd, IDOK), corner);
  const POINT cancel = TopLeftOf(GetDlgItem(hwnd, IDCANCEL), corner);
  okFromRight = corner.x - ok.x;
  stripHeight = corner.y - ok.y;
  cancelFromRight = corner.x - cancel.x;
  buttonsKnown = true;
}

bool TIntegrationPathDlg::CanClose() {
  if (!TChrom2DBase::CanClose()) return false;
  // The editor goes on with the caller's items until it ends: a count of none is none.
  if (path.items == nullptr) path.Resize(0);
  edit.Swap(path);
  return true;
}

bool TIntegrationPathDlg::ViewsCalc(HDC hdc, const RECT& rect) {
  if (!TChrom2DBase::ViewsCalc(hdc, rect)) return false;
  mapRect.bottom -= stripHeight;
  return mapRect.top < mapRect.bottom;
}

void TIntegrationPathDlg::graphs(HDC hdc, const RECT& rect) {
  TChrom2DBase::graphs(hdc, rect);
  DrawPath(hdc, rect, false);
}
