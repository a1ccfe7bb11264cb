// The colour chooser.
#include <cstdio>

#include "elugraph/host/controls.h"
#include "embedded/controls/host_module.h"
#include "embedded/controls/palette.h"

namespace embedded {
namespace {

class PaletteDialog final : public TORVDlg {
 public:
  PaletteDialog(HWND owner, COLORREF color)
      : TORVDlg(owner, ResIdCheck(kPaletteDialog, HostModule(), RT_DIALOG), nullptr,
                ResId(0U, nullptr)),
        picked_(color & 0xFFFFFF) {}

  COLORREF Picked() const { return picked_; }

  void SetupWindow() override {
    TORVDlg::SetupWindow();
    SetWindowLongPtrA(GetDlgItem(hwnd, kGridId), GWLP_USERDATA, PaletteIndex(picked_));
    ShowPicked();
  }

  LRESULT EvCommand(UINT id, HWND control, UINT notification) override {
    if (id == kGridId) {
      const auto index = static_cast<int>(GetWindowLongPtrA(control, GWLP_USERDATA));
      picked_ = PaletteColor(index / kPaletteColumns, index % kPaletteColumns);
      ShowPicked();
    }
    return TORVDlg::EvCommand(id, control, notification);
  }

 private:
  void ShowPicked() const {
    const HWND patch = GetDlgItem(hwnd, kPatchId);
    SetWindowLongPtrA(patch, GWLP_USERDATA, static_cast<LONG_PTR>(picked_));
    InvalidateRect(patch, nullptr, FALSE);
    char text[8];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", GetRValue(picked_), GetGValue(picked_),
                  GetBValue(picked_));
    SetDlgItemTextA(hwnd, kPatchLabelId, text);
  }

  COLORREF picked_;
};

}  // namespace
}  // namespace embedded

bool ChooseColorA(HWND owner, COLORREF* color, void*, void*, unsigned) {
  if (color == nullptr) return false;
  embedded::PaletteDialog dialog(owner, *color);
  if (dialog.Execute() != IDOK) return false;
  *color = dialog.Picked();
  return true;
}
