#include "embedded/controls/host_module.h"

#include "elugraph/host/kernel.h"
#include "embedded/controls/palette.h"
#include "platform/ui/resources.h"

namespace embedded {
namespace {

constexpr DWORD kFixed = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr DWORD kPush = BS_PUSHBUTTON | WS_TABSTOP;
constexpr DWORD kDefault = BS_DEFPUSHBUTTON | WS_TABSTOP | WS_GROUP;

ui::DialogTemplate Form(const char* caption, DWORD style, int width, int height) {
  ui::DialogTemplate form;
  form.caption = caption;
  form.style = style;
  form.width = width;
  form.height = height;
  return form;
}

// OK and Cancel at the bottom right, the last controls in tab order.
void AddOkAndCancel(ui::DialogTemplate& form) {
  const int width = 88, height = 28, margin = 14, gap = 8;
  const int top = form.height - margin - height;
  const int cancel = form.width - margin - width;
  form.controls.push_back(
      {"BUTTON", "OK", IDOK, kDefault, cancel - gap - width, top, width, height});
  form.controls.push_back({"BUTTON", "Cancel", IDCANCEL, kPush, cancel, top, width, height});
}

ui::DialogTemplate ColorScaleForm() {
  ui::DialogTemplate form = Form("Map colours", kFixed, 446, 226);
  const int margin = 16, swatch = 36, pitch = 42;
  form.controls.push_back(
      {"STATIC", "Colours from the lowest to the highest value", -1, SS_LEFT, margin, 14, 414, 18});
  for (int i = 0; i < 10; ++i) {
    // One group: Tab goes to the first, arrow keys to the others.
    const DWORD style = BS_OWNERDRAW | (i == 0 ? WS_GROUP | WS_TABSTOP : 0);
    form.controls.push_back({"BUTTON", "", 670 + i, style, margin + i * pitch, 38, swatch, swatch});
  }
  const DWORD first = kPush | WS_GROUP;
  form.controls.push_back({"BUTTON", "Add…", 662, first, margin, 88, 92, 28});
  form.controls.push_back({"BUTTON", "Delete", 663, kPush, margin + 100, 88, 92, 28});
  form.controls.push_back({"BUTTON", "Change…", 664, kPush, margin + 200, 88, 92, 28});
  form.controls.push_back({"STATIC", "Scale", -1, SS_LEFT | SS_CENTERIMAGE, margin, 136, 56, 22});
  const DWORD radio = BS_AUTORADIOBUTTON;
  form.controls.push_back(
      {"BUTTON", "Linear", 665, radio | WS_GROUP | WS_TABSTOP, 76, 136, 96, 22});
  form.controls.push_back({"BUTTON", "Logarithmic", 666, radio, 180, 136, 136, 22});
  AddOkAndCancel(form);
  return form;
}

ui::DialogTemplate PathEditorForm() {
  ui::DialogTemplate form = Form("Integration path", kFixed | WS_THICKFRAME, 900, 560);
  AddOkAndCancel(form);
  return form;
}

ui::DialogTemplate MapForm() {
  ui::DialogTemplate form = Form("Spectral map", kFixed | WS_THICKFRAME, 900, 560);
  form.topStrip = 44;
  form.controls.push_back({"BUTTON", "Colours…", 652, kPush, 12, 8, 104, 28});
  return form;
}

ui::DialogTemplate PaletteForm() {
  ui::DialogTemplate form = Form("Choose a colour", kFixed, 312, 330);
  form.controls.push_back(
      {RegisteredGridClass(), "", kGridId, WS_TABSTOP | WS_GROUP, 14, 14, 284, 228});
  form.controls.push_back({RegisteredPatchClass(), "", kPatchId, 0, 14, 250, 88, 22});
  form.controls.push_back(
      {"STATIC", "", kPatchLabelId, SS_LEFT | SS_CENTERIMAGE, 112, 250, 186, 22});
  AddOkAndCancel(form);
  return form;
}

}  // namespace

HMODULE HostModule() {
  static const HMODULE module = [] {
    const HMODULE made = ui::RegisterModule("embedded host");
    ui::AddDialog(made, MAKEINTRESOURCEA(kColorScaleDialog), ColorScaleForm());
    ui::AddDialog(made, MAKEINTRESOURCEA(kPathEditorDialog), PathEditorForm());
    ui::AddDialog(made, MAKEINTRESOURCEA(kMapDialog), MapForm());
    ui::AddDialog(made, MAKEINTRESOURCEA(kPaletteDialog), PaletteForm());
    return made;
  }();
  return module;
}

}  // namespace embedded

// The caller's own template, where its module has one, goes before the host's.
HMODULE muiGetDlgTemplateModule(HMODULE module, const char* name) {
  if (ui::FindDialog(module, name) != nullptr) return module;
  const HMODULE host = embedded::HostModule();
  return ui::FindDialog(host, name) != nullptr ? host : module;
}
