// Dialog windows and their reference counting.
#include "elugraph/host/controls.h"
#include "platform/ui/front.h"
#include "platform/ui/resources.h"

Thunk::Thunk() = default;
Thunk::~Thunk() = default;

int Thunk::_AddRef() { return ++references; }

int Thunk::_Release() {
  const int left = --references;
  if (left == 0) delete this;
  return left;
}

TORVDlg::TORVDlg(HWND parent, const ResIdCheck& dialogTemplate, HWND* place, const ResId& resource)
    : parent_(parent), template_(dialogTemplate), place_(place), resource_(resource) {
  if (place_ != nullptr) *place_ = nullptr;
}

TORVDlg::~TORVDlg() {
  if (place_ != nullptr) *place_ = nullptr;
  if (hwnd == nullptr) return;
  SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0);
  DestroyWindow(hwnd);
}

LRESULT TORVDlg::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    auto* made = static_cast<TORVDlg*>(create->lpCreateParams);
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made));
    made->_AddRef();
    made->hwnd = window;
    made->closing_ = false;
    if (made->place_ != nullptr) *made->place_ = window;
  }
  auto* dialog = reinterpret_cast<TORVDlg*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (dialog == nullptr) return DefDlgProcA(window, message, wParam, lParam);
  // The object outlives the message, whatever the message does to its window.
  dialog->_AddRef();
  const LRESULT result = dialog->WindowProc(message, wParam, lParam);
  if (message == WM_NCDESTROY && dialog->hwnd == window) {
    SetWindowLongPtrA(window, GWLP_USERDATA, 0);
    dialog->hwnd = nullptr;
    if (dialog->place_ != nullptr) *dialog->place_ = nullptr;
    dialog->_Release();
  }
  dialog->_Release();
  return result;
}

LRESULT TORVDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      SetupWindow();
      return TRUE;
    case WM_COMMAND:
      return EvCommand(LOWORD(wParam), reinterpret_cast<HWND>(lParam), HIWORD(wParam));
    case WM_CLOSE:
      return EvCommand(IDCANCEL, GetDlgItem(hwnd, IDCANCEL), BN_CLICKED);
    default:
      return DefDlgProcA(hwnd, message, wParam, lParam);
  }
}

LRESULT TORVDlg::EvCommand(UINT id, HWND, UINT notification) {
  if (notification != BN_CLICKED || closing_ || hwnd == nullptr) return 0;
  if (id == IDCANCEL || (id == IDOK && CanClose())) {
    closing_ = true;
    EndDialog(hwnd, id);
  }
  return 0;
}

void TORVDlg::SetupWindow() { Reset(); }

bool TORVDlg::CanClose() {
  if (const HWND invalid = GetInvalid()) {
    SetFocus(invalid);
    return false;
  }
  return ApplyData();
}

HWND TORVDlg::Create(int mode) {
  if (hwnd != nullptr) return hwnd;
  _AddRef();
  const HWND made =
      ui::CreateDialogWindow(template_.module, template_.name, parent_, Procedure, this);
  if (made != nullptr && mode != -1) ShowWindow(made, SW_SHOW);
  // Last: without a window nothing else may hold the object.
  _Release();
  return made;
}

void TORVDlg::Reset() {}

HWND TORVDlg::GetInvalid() { return nullptr; }

bool TORVDlg::ApplyData() { return true; }

int TORVDlg::Execute() {
  // Counted by hand: giving this reference back must not end the object.
  ++references;
  const HWND window = Create(-1);
  const int result = window != nullptr ? static_cast<int>(ui::RunModalDialog(window)) : 0;
  --references;
  return result;
}

HWND PostExecute(HWND dialog, PostExecuteCallback callback, void* context, bool flag) {
  const auto done = [callback, context](LONG_PTR result) {
    if (callback != nullptr) callback(static_cast<int>(result), context);
  };
  return ui::RunDialog(dialog, done, flag) ? dialog : nullptr;
}

SIZE GetTextExtent(HWND window, const char* text, HDC hdc, int length) {
  SIZE extent{0, 0};
  if (text == nullptr || length < 0) return extent;
  const HDC own = hdc == nullptr ? GetDC(window) : nullptr;
  if (!GetTextExtentPoint32A(hdc != nullptr ? hdc : own, text, length, &extent)) extent = {0, 0};
  if (own != nullptr) ReleaseDC(window, own);
  return extent;
}
