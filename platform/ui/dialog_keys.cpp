// The keyboard in dialogs: Tab, Enter, Escape, arrow keys.
#include <algorithm>

#include "platform/ui/desk.h"

namespace ui {
namespace {

bool CanTakeFocus(HWND control) { return IsWindowVisible(control) && TakesInput(control); }

bool IsTabStop(const Window& control) {
  // What counts is the control itself: a dialog that is still hidden has a first control, too.
  return (control.style & (WS_TABSTOP | WS_VISIBLE)) == (WS_TABSTOP | WS_VISIBLE) &&
         control.Enabled();
}

LRESULT DialogCode(HWND control) { return SendMessageA(control, WM_GETDLGCODE, 0, 0); }

void FocusByKey(HWND control) {
  if (control == nullptr) return;
  TheDesk().focusVisible = true;
  SetFocus(control);
  InvalidateRect(control, nullptr, TRUE);
}

// The next control of the same group (WS_GROUP starts one) that can take the focus.
HWND NextInGroup(HWND control, bool previous) {
  const WindowRef window = WindowOf(control);
  const WindowRef parent = window ? WindowOf(window->parent) : nullptr;
  if (!parent) return nullptr;
  const std::vector<HWND>& all = parent->children;
  const auto startsGroup = [](HWND each) {
    return (GetWindowLongPtrA(each, GWL_STYLE) & WS_GROUP) != 0;
  };
  const auto at = std::find(all.begin(), all.end(), control);
  auto first = at;
  while (first != all.begin() && !startsGroup(*first)) --first;
  const auto last = std::find_if(at + 1, all.end(), startsGroup);
  const auto count = last - first;
  for (std::ptrdiff_t step = 1; step < count; ++step) {
    const auto index = (at - first) + (previous ? count - step : step);
    const HWND candidate = *(first + index % count);
    if ((DialogCode(candidate) & DLGC_STATIC) == 0 && CanTakeFocus(candidate)) return candidate;
  }
  return nullptr;
}

void MoveInGroup(HWND control, bool previous) {
  const HWND next = NextInGroup(control, previous);
  if (next == nullptr) return;
  FocusByKey(next);
  if ((DialogCode(next) & DLGC_RADIOBUTTON) != 0) SendMessageA(next, BM_CLICK, 0, 0);
}

void Command(HWND dialog, int id) {
  const HWND control = GetDlgItem(dialog, id);
  if (control != nullptr && !IsWindowEnabled(control)) return;
  SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(control));
}

void Enter(HWND dialog, HWND control) {
  if ((DialogCode(control) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0) {
    SendMessageA(control, BM_CLICK, 0, 0);
    return;
  }
  const LRESULT id = SendMessageA(dialog, DM_GETDEFID, 0, 0);
  Command(dialog, HIWORD(id) == DC_HASDEFID ? LOWORD(id) : IDOK);
}

}  // namespace

bool IsDialogKey(const MSG& message) {
  const HWND root = RootOf(message.hwnd);
  const WindowRef window = WindowOf(root);
  return window && window->dialog && IsDialogMessageA(root, &message) != FALSE;
}

}  // namespace ui

using ui::WindowOf;
using ui::WindowRef;

HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous) {
  const WindowRef window = WindowOf(dialog);
  if (!window || window->children.empty()) return nullptr;
  const std::vector<HWND>& all = window->children;
  const auto count = static_cast<std::ptrdiff_t>(all.size());
  const auto at = std::find(all.begin(), all.end(), control);
  // Without a control to start from, the search begins one step outside.
  std::ptrdiff_t index = at != all.end() ? at - all.begin() : (previous != FALSE ? count : -1);
  for (std::ptrdiff_t tried = 0; tried < count; ++tried) {
    index = (index + (previous != FALSE ? count - 1 : 1) + (index < 0 ? count : 0)) % count;
    const WindowRef child = WindowOf(all[static_cast<std::size_t>(index)]);
    if (child && ui::IsTabStop(*child)) return child->Self();
  }
  return nullptr;
}

BOOL IsDialogMessageA(HWND dialog, const MSG* message) {
  if (message == nullptr || message->message != WM_KEYDOWN || !IsWindow(dialog) ||
      !ui::Within(dialog, message->hwnd)) {
    return FALSE;
  }
  const LRESULT wants = ui::DialogCode(message->hwnd);
  if ((wants & DLGC_WANTALLKEYS) != 0) return FALSE;
  switch (message->wParam) {
    case VK_TAB:
      if ((wants & DLGC_WANTTAB) != 0) return FALSE;
      ui::FocusByKey(GetNextDlgTabItem(dialog, message->hwnd, GetKeyState(VK_SHIFT) < 0));
      return TRUE;
    case VK_RETURN:
      ui::Enter(dialog, message->hwnd);
      return TRUE;
    case VK_ESCAPE:
      ui::Command(dialog, IDCANCEL);
      return TRUE;
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
      if ((wants & DLGC_WANTARROWS) != 0 || message->hwnd == dialog) return FALSE;
      ui::MoveInGroup(message->hwnd, message->wParam == VK_LEFT || message->wParam == VK_UP);
      return TRUE;
    default:
      return FALSE;
  }
}
