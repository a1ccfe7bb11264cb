// Positions, extents, showing and hiding.
#include <algorithm>

#include "platform/ui/desk.h"

namespace ui {
namespace {

// What the parent shows where the child is.
void MarkPlace(const Window& window) {
  if (window.IsTop() || !window.Visible()) return;
  if (const WindowRef parent = WindowOf(window.parent)) MarkShown(*parent, window.place);
}

void Raise(const Window& window) {
  Desk& desk = TheDesk();
  const auto at = std::find(desk.tops.begin(), desk.tops.end(), window.Self());
  if (at != desk.tops.end()) std::rotate(at, at + 1, desk.tops.end());
  if (desk.front != nullptr && window.Visible()) desk.front->Raised(window.Self());
}

void SendPosition(const Window& window, UINT flags) {
  WINDOWPOS position{window.Self(),   nullptr, window.place.left, window.place.top, window.Width(),
                     window.Height(), flags};
  SendMessageA(window.Self(), WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
}

}  // namespace

RECT LimitedPlace(int x, int y, int width, int height) {
  constexpr int kMaxExtent = 16384;
  constexpr int kMaxPosition = 1 << 20;
  x = std::clamp(x, -kMaxPosition, kMaxPosition);
  y = std::clamp(y, -kMaxPosition, kMaxPosition);
  return {x, y, x + std::clamp(width, 0, kMaxExtent), y + std::clamp(height, 0, kMaxExtent)};
}

POINT ScreenOrigin(const Window& window) {
  POINT origin{window.place.left, window.place.top};
  for (WindowRef each = window.IsTop() ? nullptr : WindowOf(window.parent); each;
       each = each->IsTop() ? nullptr : WindowOf(each->parent)) {
    origin.x += each->place.left;
    origin.y += each->place.top;
  }
  return origin;
}

bool ShownOnScreen(const Window& window) {
  if (!window.Visible()) return false;
  if (window.IsTop()) return true;
  const WindowRef parent = WindowOf(window.parent);
  return parent && ShownOnScreen(*parent);
}

void PlaceWindow(Window& window, RECT place, UINT flags) {
  const RECT old = window.place;
  const bool moved = old.left != place.left || old.top != place.top;
  const bool sized =
      window.Width() != place.right - place.left || window.Height() != place.bottom - place.top;
  if (!moved) flags |= SWP_NOMOVE;
  if (!sized) flags |= SWP_NOSIZE;
  if (!moved && !sized && (flags & SWP_FRAMECHANGED) == 0) return;
  MarkPlace(window);
  window.place = place;
  MarkPlace(window);
  if (sized) {
    window.invalid = Intersection(window.invalid, window.Client());
    MarkShown(window, window.Client());
    if ((flags & SWP_NOREDRAW) == 0) InvalidateRect(window.Self(), nullptr, TRUE);
  }
  SendPosition(window, flags);
}

}  // namespace ui

using ui::WindowOf;
using ui::WindowRef;

BOOL SetWindowPos(HWND window, HWND, int x, int y, int width, int height, UINT flags) {
  const WindowRef found = WindowOf(window);
  if (!found) return FALSE;
  if ((flags & SWP_NOMOVE) != 0) {
    x = found->place.left;
    y = found->place.top;
  }
  if ((flags & SWP_NOSIZE) != 0) {
    width = found->Width();
    height = found->Height();
  }
  const RECT old = found->place;
  ui::PlaceWindow(*found, ui::LimitedPlace(x, y, width, height), flags);
  const RECT now = found->place;
  ui::Front* const front = ui::TheDesk().front;
  if (found->IsTop() && front != nullptr && IsWindow(window) &&
      (old.left != now.left || old.top != now.top || old.right != now.right ||
       old.bottom != now.bottom)) {
    front->Placed(window);
  }
  if ((flags & SWP_SHOWWINDOW) != 0) {
    ShowWindow(window, (flags & SWP_NOACTIVATE) != 0 ? SW_SHOWNOACTIVATE : SW_SHOW);
  }
  if ((flags & SWP_HIDEWINDOW) != 0) ShowWindow(window, SW_HIDE);
  if (!found->IsTop() || !IsWindow(window)) return TRUE;
  if ((flags & SWP_NOZORDER) == 0) ui::Raise(*found);
  if ((flags & (SWP_NOACTIVATE | SWP_HIDEWINDOW)) == 0 && found->Visible()) ui::Activate(window);
  return TRUE;
}

BOOL ShowWindow(HWND window, int command) {
  const WindowRef found = WindowOf(window);
  if (!found) return FALSE;
  const bool was = found->Visible();
  const bool show = command != SW_HIDE;
  if (was != show) {
    if (!show) ui::MarkPlace(*found);
    found->style ^= WS_VISIBLE;
    if (show) ui::MarkPlace(*found);
    SendMessageA(window, WM_SHOWWINDOW, show, 0);
    if (!IsWindow(window)) return was;
    ui::SendPosition(
        *found, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
    if (!IsWindow(window)) return was;
    if (!show) ui::Forsake(window);
    if (ui::Front* const front = ui::TheDesk().front; front != nullptr && found->IsTop()) {
      if (show) {
        ui::MarkShown(*found, found->Client());
        front->Shown(window);
      } else {
        front->Gone(window);
      }
    }
    if (!show && ui::TheDesk().active == window) ui::ActivateAnother(window);
  }
  if (show && command != SW_SHOWNOACTIVATE && found->IsTop()) ui::Activate(window);
  return was;
}

BOOL IsWindowVisible(HWND window) {
  const WindowRef found = WindowOf(window);
  return found && ui::ShownOnScreen(*found);
}

BOOL GetWindowRect(HWND window, RECT* rect) {
  const WindowRef found = WindowOf(window);
  if (!found || rect == nullptr) return FALSE;
  *rect = ui::Moved(found->Client(), ui::ScreenOrigin(*found));
  return TRUE;
}

BOOL GetClientRect(HWND window, RECT* rect) {
  const WindowRef found = WindowOf(window);
  if (!found || rect == nullptr) return FALSE;
  *rect = found->Client();
  return TRUE;
}

namespace {

// Wraps at the limits of 32 bits, as positions that far out have no meaning.
LONG Offset(LONG value, LONG by) {
  return static_cast<LONG>(static_cast<ULONG>(value) + static_cast<ULONG>(by));
}

}  // namespace

BOOL ClientToScreen(HWND window, POINT* point) {
  const WindowRef found = WindowOf(window);
  if (!found || point == nullptr) return FALSE;
  const POINT origin = ui::ScreenOrigin(*found);
  *point = {Offset(point->x, origin.x), Offset(point->y, origin.y)};
  return TRUE;
}

BOOL ScreenToClient(HWND window, POINT* point) {
  const WindowRef found = WindowOf(window);
  if (!found || point == nullptr) return FALSE;
  const POINT origin = ui::ScreenOrigin(*found);
  *point = {Offset(point->x, -origin.x), Offset(point->y, -origin.y)};
  return TRUE;
}
