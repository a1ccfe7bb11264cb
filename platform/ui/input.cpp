// Input of the front becomes messages of the window it is meant for.
#include <algorithm>

#include "platform/ui/desk.h"

namespace ui {
namespace {

// The innermost shown window at a screen position.
HWND WindowAt(const Window& window, POINT screen) {
  const POINT origin = ScreenOrigin(window);
  if (!window.Visible() || !PtInRect(Moved(window.Client(), origin), screen)) return nullptr;
  for (auto each = window.children.rbegin(); each != window.children.rend(); ++each) {
    const WindowRef child = WindowOf(*each);
    if (!child || child->windowClass->mousePassesThrough) continue;
    if (const HWND found = WindowAt(*child, screen)) return found;
  }
  return window.Self();
}

WPARAM MouseKeys() {
  const Desk& desk = TheDesk();
  WPARAM keys = desk.mouseButtons;
  if (desk.keysDown.count(VK_SHIFT) != 0) keys |= MK_SHIFT;
  if (desk.keysDown.count(VK_CONTROL) != 0) keys |= MK_CONTROL;
  return keys;
}

struct ButtonMessages {
  UINT down, up;
  WPARAM flag;
};

const ButtonMessages& MessagesOf(int button) {
  static constexpr ButtonMessages kMessages[] = {{WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON},
                                                 {WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON},
                                                 {WM_MBUTTONDOWN, WM_MBUTTONUP, MK_MBUTTON}};
  return kMessages[std::clamp(button, 0, 2)];
}

// `message` of the mouse at desk.mouse goes to the window with the capture, or under the mouse.
void SendMouse(const Input& input, UINT message, WPARAM wParam) {
  Desk& desk = TheDesk();
  HWND target = desk.capture;
  if (target == nullptr) {
    const WindowRef top = WindowOf(input.top);
    target = top ? WindowAt(*top, desk.mouse) : nullptr;
    SetUnder(target);
    if (target == nullptr || !TakesInput(target)) return;
    SendMessageA(target, WM_SETCURSOR, reinterpret_cast<WPARAM>(target),
                 MAKELPARAM(HTCLIENT, static_cast<int>(message)));
  }
  POINT at = desk.mouse;
  if (!ScreenToClient(target, &at)) return;
  DispatchQueued({target, message, wParam, PositionParam(at), GetTickCount(), desk.mouse});
}

void HandleMouse(const Input& input) {
  Desk& desk = TheDesk();
  const WindowRef top = WindowOf(input.top);
  POINT at = input.at;
  if (!top || !ClientToScreen(input.top, &at)) return;
  desk.mouse = at;
  const ButtonMessages& messages = MessagesOf(input.code);
  if (input.kind == InputKind::kButton) {
    desk.mouseButtons =
        input.down ? desk.mouseButtons | messages.flag : desk.mouseButtons & ~messages.flag;
  }
  if (desk.capture == nullptr && !top->Enabled()) {
    SetUnder(nullptr);
    if (input.kind == InputKind::kButton && input.down) Activate(input.top);
    return;
  }
  switch (input.kind) {
    case InputKind::kButton:
      if (input.down) {
        desk.focusVisible = false;
        Activate(input.top);
      }
      return SendMouse(input, input.down ? messages.down : messages.up, MouseKeys());
    case InputKind::kWheel:
      return SendMouse(input, WM_MOUSEWHEEL, MAKEWPARAM(static_cast<int>(MouseKeys()), input.code));
    default:
      return SendMouse(input, WM_MOUSEMOVE, MouseKeys());
  }
}

void HandleKey(const Input& input) {
  Desk& desk = TheDesk();
  if (input.kind == InputKind::kKey) {
    if (input.down) {
      desk.keysDown.insert(input.code);
    } else {
      desk.keysDown.erase(input.code);
    }
  }
  const HWND target = Within(input.top, desk.focus) ? desk.focus : input.top;
  if (!TakesInput(target)) return;
  const UINT message = input.kind == InputKind::kCharacter ? WM_CHAR
                       : input.down                        ? WM_KEYDOWN
                                                           : WM_KEYUP;
  const LPARAM repeat = 1;
  DispatchQueued(
      {target, message, static_cast<WPARAM>(input.code), repeat, GetTickCount(), desk.mouse});
}

void HandlePlace(const Input& input) {
  const WindowRef top = WindowOf(input.top);
  if (!top || !top->IsTop()) return;
  const bool size = input.kind == InputKind::kSize;
  const POINT at = size ? POINT{top->place.left, top->place.top} : input.at;
  const SIZE extent = size ? SIZE{input.at.x, input.at.y} : SIZE{top->Width(), top->Height()};
  PlaceWindow(*top, LimitedPlace(at.x, at.y, extent.cx, extent.cy), SWP_NOZORDER | SWP_NOACTIVATE);
}

void HandleActivate(const Input& input) {
  Desk& desk = TheDesk();
  if (input.down) return Activate(input.top);
  desk.keysDown.clear();
  if (desk.active == input.top) Deactivate();
}

}  // namespace

void SetUnder(HWND window) {
  const HWND before = std::exchange(TheDesk().under, window);
  if (before != window) SendMessageA(before, WM_MOUSELEAVE, 0, 0);
}

LPARAM PositionParam(POINT at) {
  const auto limited = [](LONG value) { return std::clamp<LONG>(value, INT16_MIN, INT16_MAX); };
  return MAKELPARAM(limited(at.x), limited(at.y));
}

void HandleInput(const Input& input) {
  switch (input.kind) {
    case InputKind::kMove:
    case InputKind::kButton:
    case InputKind::kWheel:
      return HandleMouse(input);
    case InputKind::kLeave:
      return SetUnder(nullptr);
    case InputKind::kKey:
    case InputKind::kCharacter:
      return HandleKey(input);
    case InputKind::kSize:
    case InputKind::kPlace:
      return HandlePlace(input);
    case InputKind::kActivate:
      return HandleActivate(input);
    case InputKind::kClose:
      if (TakesInput(input.top)) {
        DispatchQueued({input.top, WM_CLOSE, 0, 0, GetTickCount(), TheDesk().mouse});
      } else {
        Activate(input.top);
      }
      return;
  }
}

namespace {

void Feed(Input input) { TheDesk().input.push_back(input); }

}  // namespace

void FeedMouseMove(HWND top, POINT position) { Feed({InputKind::kMove, top, position}); }

void FeedMouseButton(HWND top, MouseButton button, bool down, POINT position) {
  Feed({InputKind::kButton, top, position, static_cast<int>(button), down});
}

void FeedMouseWheel(HWND top, int delta, POINT position) {
  Feed({InputKind::kWheel, top, position, delta});
}

void FeedMouseLeave(HWND top) { Feed({InputKind::kLeave, top}); }

void FeedKey(HWND top, WORD key, bool down) { Feed({InputKind::kKey, top, {0, 0}, key, down}); }

void FeedCharacter(HWND top, char character) {
  Feed({InputKind::kCharacter, top, {0, 0}, static_cast<unsigned char>(character)});
}

void FeedResize(HWND top, SIZE extent) { Feed({InputKind::kSize, top, {extent.cx, extent.cy}}); }

void FeedMove(HWND top, POINT position) { Feed({InputKind::kPlace, top, position}); }

void FeedActivate(HWND top, bool active) { Feed({InputKind::kActivate, top, {0, 0}, 0, active}); }

void FeedClose(HWND top) { Feed({InputKind::kClose, top}); }

}  // namespace ui

BOOL GetCursorPos(POINT* point) {
  if (point == nullptr) return FALSE;
  *point = ui::TheDesk().mouse;
  return TRUE;
}

std::int16_t GetKeyState(int key) {
  return ui::TheDesk().keysDown.count(key) != 0 ? static_cast<std::int16_t>(-0x8000) : 0;
}
