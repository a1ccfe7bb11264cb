// Sending, posting and the loop.
#include <algorithm>

#include "platform/ui/desk.h"

namespace ui {
namespace {

bool IsKey(UINT message) { return message >= WM_KEYDOWN && message <= WM_CHAR; }

template <class Queue>
auto TakeFirst(Queue& queue) {
  auto first = std::move(queue.front());
  queue.erase(queue.begin());
  return first;
}

// Tells a size or position change in the older way.
void SendSizeAndMove(const Window& window, const WINDOWPOS& position) {
  const HWND self = window.Self();
  if ((position.flags & SWP_NOMOVE) == 0) {
    SendMessageA(self, WM_MOVE, 0, MAKELPARAM(position.x, position.y));
  }
  if ((position.flags & SWP_NOSIZE) == 0) {
    SendMessageA(self, WM_SIZE, SIZE_RESTORED, MAKELPARAM(position.cx, position.cy));
  }
}

LRESULT EraseBackground(const Window& window, HDC hdc) {
  const HBRUSH brush = window.windowClass->background;
  const RECT client = window.Client();
  return brush != nullptr && FillRect(hdc, &client, brush) != 0;
}

// A parent that shows a cursor of its own over its children goes first.
LRESULT ShowClassCursor(const Window& window, WPARAM wParam, LPARAM lParam) {
  if (!window.IsTop() && SendMessageA(window.parent, WM_SETCURSOR, wParam, lParam) != 0) {
    return TRUE;
  }
  if (LOWORD(lParam) != HTCLIENT || window.windowClass->cursor == nullptr) return FALSE;
  SetCursor(window.windowClass->cursor);
  return TRUE;
}

LRESULT UsualColors(WPARAM wParam) {
  const auto hdc = reinterpret_cast<HDC>(wParam);
  SetTextColor(hdc, GetSysColor(COLOR_BTNTEXT));
  SetBkColor(hdc, GetSysColor(COLOR_3DFACE));
  return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_3DFACE));
}

void Rename(Window& window, const char* text) {
  window.text = text != nullptr ? text : "";
  InvalidateRect(window.Self(), nullptr, TRUE);
  if (window.IsTop() && TheDesk().front != nullptr) TheDesk().front->Renamed(window.Self());
}

}  // namespace

void DispatchQueued(const MSG& message) {
  Desk& desk = TheDesk();
  if (desk.filter != nullptr && desk.filter(message)) return;
  if (IsKey(message.message) && IsDialogKey(message)) return;
  SendMessageA(message.hwnd, message.message, message.wParam, message.lParam);
}

MessageFilter SetMessageFilter(MessageFilter filter) {
  return std::exchange(TheDesk().filter, filter);
}

bool Step() {
  Desk& desk = TheDesk();
  if (!desk.posted.empty()) {
    DispatchQueued(TakeFirst(desk.posted));
    return true;
  }
  if (!desk.input.empty()) {
    HandleInput(TakeFirst(desk.input));
    return true;
  }
  return EndNextDialog() || PaintNext() || PresentAll() || FireTimer();
}

bool RunUntil(const std::function<bool()>& done) {
  Desk& desk = TheDesk();
  while (!done()) {
    if (desk.quit) return false;
    if (Step()) continue;
    if (desk.front == nullptr || !desk.front->Wait(NextTimerDue())) return done();
  }
  return true;
}

bool QuitPosted(int* exitCode) {
  if (TheDesk().quit && exitCode != nullptr) *exitCode = TheDesk().exitCode;
  return TheDesk().quit;
}

void ResetQuit() { TheDesk().quit = false; }

}  // namespace ui

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const ui::WindowRef found = ui::WindowOf(window);
  return found ? found->procedure(window, message, wParam, lParam) : 0;
}

BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (!IsWindow(window)) return FALSE;
  ui::Desk& desk = ui::TheDesk();
  desk.posted.push_back({window, message, wParam, lParam, GetTickCount(), desk.mouse});
  return TRUE;
}

void PostQuitMessage(int exitCode) {
  ui::TheDesk().quit = true;
  ui::TheDesk().exitCode = exitCode;
}

LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const ui::WindowRef found = ui::WindowOf(window);
  if (!found) return 0;
  switch (message) {
    case WM_NCCREATE:
      return TRUE;
    case WM_CLOSE:
      DestroyWindow(window);
      return 0;
    case WM_PAINT: {
      PAINTSTRUCT paint;
      BeginPaint(window, &paint);
      EndPaint(window, &paint);
      return 0;
    }
    case WM_ERASEBKGND:
      return ui::EraseBackground(*found, reinterpret_cast<HDC>(wParam));
    case WM_WINDOWPOSCHANGED:
      if (lParam != 0) ui::SendSizeAndMove(*found, *reinterpret_cast<const WINDOWPOS*>(lParam));
      return 0;
    case WM_SETCURSOR:
      return ui::ShowClassCursor(*found, wParam, lParam);
    case WM_SETTEXT:
      ui::Rename(*found, reinterpret_cast<const char*>(lParam));
      return TRUE;
    case WM_SETFONT:
      found->font = reinterpret_cast<HFONT>(wParam);
      if (lParam != 0) InvalidateRect(window, nullptr, TRUE);
      return 0;
    case WM_GETFONT:
      return reinterpret_cast<LRESULT>(found->font);
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC:
      return ui::UsualColors(wParam);
    case WM_ACTIVATE:
      if (LOWORD(wParam) != WA_INACTIVE) ui::RefreshFocus();
      return 0;
    case WM_MOUSEWHEEL:
      return found->IsTop() ? 0 : SendMessageA(found->parent, message, wParam, lParam);
    default:
      return 0;
  }
}
