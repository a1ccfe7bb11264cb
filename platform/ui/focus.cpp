// The active window, keyboard focus and mouse capture.
#include <algorithm>

#include "platform/ui/desk.h"

namespace ui {
namespace {

// Hands the focus on with its two messages. `to` may be null.
void MoveFocus(HWND to) {
  Desk& desk = TheDesk();
  const HWND from = desk.focus;
  if (from == to) return;
  desk.focus = to;
  SendMessageA(from, WM_KILLFOCUS, reinterpret_cast<WPARAM>(to), 0);
  if (desk.focus == to) SendMessageA(to, WM_SETFOCUS, reinterpret_cast<WPARAM>(from), 0);
}

bool MayBeActive(HWND top) { return IsWindowVisible(top) && TakesInput(top); }

// Nobody has the focus; its top-level window remembers who had it.
void LeaveFocus() {
  const HWND focus = TheDesk().focus;
  if (const WindowRef root = WindowOf(RootOf(focus))) root->focusKept = focus;
  MoveFocus(nullptr);
}

void SetActive(HWND top) {
  Desk& desk = TheDesk();
  const HWND from = desk.active;
  if (from == top) return;
  LeaveFocus();
  // The messages may have changed everything.
  if (desk.active != from) return;
  if (!MayBeActive(top)) top = nullptr;
  desk.focus = nullptr;
  desk.active = top;
  SendMessageA(from, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(top));
  if (desk.active == top) {
    SendMessageA(top, WM_ACTIVATE, WA_ACTIVE, reinterpret_cast<LPARAM>(from));
  }
}

}  // namespace

// Only windows that take input become active; in place of a blocked one, the dialog that blocks it.
void Activate(HWND top) {
  const WindowRef window = WindowOf(top);
  if (!window || !window->IsTop() || window->ending) return;
  if (!window->Enabled()) {
    for (auto each = window->owned.rbegin(); each != window->owned.rend(); ++each) {
      const WindowRef dialog = WindowOf(*each);
      if (!dialog || !dialog->dialog || !dialog->dialog->blocksOwner || !dialog->Visible())
        continue;
      const HWND blocker = dialog->Self();
      if (TheDesk().front != nullptr) TheDesk().front->Raised(blocker);
      return Activate(blocker);
    }
    return;
  }
  SetActive(top);
}

void Deactivate() {
  ReleaseCapture();
  SetActive(nullptr);
}

void ActivateAnother(HWND notThis) {
  HWND next = GetParent(notThis);
  if (!MayBeActive(next)) {
    const std::vector<HWND>& tops = TheDesk().tops;
    const auto other = std::find_if(tops.rbegin(), tops.rend(), [notThis](HWND each) {
      return each != notThis && MayBeActive(each);
    });
    next = other != tops.rend() ? *other : nullptr;
  }
  SetActive(next);
  // The desktop may have left its keyboard with the window that is gone.
  if (TheDesk().front != nullptr && IsWindow(next)) TheDesk().front->Raised(next);
}

void Forsake(HWND window) {
  Desk& desk = TheDesk();
  if (Within(window, desk.capture)) ReleaseCapture();
  if (Within(window, desk.under)) SetUnder(nullptr);
  if (Within(window, desk.focus)) LeaveFocus();
}

void Forget(HWND window) {
  Desk& desk = TheDesk();
  if (desk.capture == window && desk.front != nullptr) desk.front->CaptureChanged(false);
  for (HWND* held : {&desk.capture, &desk.under, &desk.focus, &desk.active}) {
    if (*held == window) *held = nullptr;
  }
}

// The focus of a window that became active: what it had before, the first control of a dialog, or
// the window itself.
void RefreshFocus() {
  const WindowRef window = WindowOf(TheDesk().active);
  if (!window) return;
  HWND to = window->focusKept;
  if (!Within(window->Self(), to) || !IsWindowVisible(to) || !TakesInput(to)) {
    to = window->dialog ? GetNextDlgTabItem(window->Self(), nullptr, FALSE) : nullptr;
  }
  MoveFocus(to != nullptr ? to : window->Self());
}

}  // namespace ui

using ui::TheDesk;

HWND SetFocus(HWND window) {
  ui::Desk& desk = TheDesk();
  const HWND before = desk.focus;
  if (window == nullptr) {
    ui::MoveFocus(nullptr);
    return before;
  }
  if (!IsWindow(window) || !ui::TakesInput(window)) return nullptr;
  const HWND root = ui::RootOf(window);
  if (root != desk.active) {
    ui::WindowOf(root)->focusKept = window;
    if (!IsWindowVisible(root)) return before;
    ui::Activate(root);
  }
  if (desk.active == root && IsWindow(window)) ui::MoveFocus(window);
  return before;
}

HWND GetFocus() { return TheDesk().focus; }

HWND GetActiveWindow() { return TheDesk().active; }

HWND SetCapture(HWND window) {
  ui::Desk& desk = TheDesk();
  const HWND before = desk.capture;
  if (!IsWindow(window) || before == window) return before;
  desk.capture = window;
  SendMessageA(before, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
  if (before == nullptr && desk.front != nullptr) desk.front->CaptureChanged(true);
  return before;
}

HWND GetCapture() { return TheDesk().capture; }

BOOL ReleaseCapture() {
  ui::Desk& desk = TheDesk();
  const HWND before = std::exchange(desk.capture, nullptr);
  if (before == nullptr) return TRUE;
  if (desk.front != nullptr) desk.front->CaptureChanged(false);
  SendMessageA(before, WM_CAPTURECHANGED, 0, 0);
  return TRUE;
}
