#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/resources/library_module.h"

TLastPaintDlg::TLastPaintDlg(HWND parent, const ResIdCheck& dialogTemplate, HWND* place)
    : TORVDlg(parent, dialogTemplate, place, ResId(0U, LibraryModule())) {}

TLastPaintDlg::~TLastPaintDlg() = default;

LRESULT TLastPaintDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  LRESULT result = 0;
  if (MsgFilter(result, hwnd, message, wParam, lParam)) return result;
  // The picture covers what an erased background would show.
  if (message == WM_ERASEBKGND) return 1;
  return TORVDlg::WindowProc(message, wParam, lParam);
}
