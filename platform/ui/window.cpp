// Classes, making and ending windows, and what is known about them.
#include <algorithm>
#include <cstring>

#include "platform/ui/desk.h"

namespace ui {
namespace {

template <class T>
void EraseValue(std::vector<T>& values, const T& value) {
  values.erase(std::remove(values.begin(), values.end(), value), values.end());
}

WindowClass* AddClass(Desk& desk, const char* name, WNDPROC procedure, HCURSOR cursor,
                      HBRUSH background) {
  auto made = std::make_unique<WindowClass>();
  made->name = name;
  made->procedure = procedure;
  made->cursor = cursor;
  made->background = background;
  auto& slot = desk.classes[LowerCase(name)];
  slot = std::move(made);
  return slot.get();
}

// Position of a top-level window of the given extent: over the middle of its owner, or on the
// screen, and not beyond its upper left corner.
POINT Centred(SIZE extent, HWND owner) {
  RECT frame{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  const WindowRef over = WindowOf(owner);
  if (over && over->Visible()) frame = over->place;
  return {std::max<LONG>(0, frame.left + (frame.right - frame.left - extent.cx) / 2),
          std::max<LONG>(0, frame.top + (frame.bottom - frame.top - extent.cy) / 2)};
}

void Link(Window& window) {
  Desk& desk = TheDesk();
  if (window.IsTop()) {
    desk.tops.push_back(window.Self());
    if (const WindowRef owner = WindowOf(window.parent)) owner->owned.push_back(window.Self());
  } else {
    WindowOf(window.parent)->children.push_back(window.Self());
  }
  ++desk.windowCount;
}

void Unlink(Window& window) {
  Desk& desk = TheDesk();
  const HWND self = window.Self();
  if (window.IsTop()) EraseValue(desk.tops, self);
  if (const WindowRef parent = WindowOf(window.parent)) {
    EraseValue(window.IsTop() ? parent->owned : parent->children, self);
  }
  --desk.windowCount;
}

void DropQueuesOf(HWND window) {
  Desk& desk = TheDesk();
  const auto drop = [window](auto& queue, auto owner) {
    queue.erase(std::remove_if(queue.begin(), queue.end(),
                               [&](const auto& entry) { return owner(entry) == window; }),
                queue.end());
  };
  drop(desk.posted, [](const MSG& message) { return message.hwnd; });
  drop(desk.timers, [](const Timer& timer) { return timer.window; });
  drop(desk.endedDialogs, [](HWND dialog) { return dialog; });
}

// The last step of a window's life; its children are gone.
void Finish(const WindowRef& window) {
  const HWND self = window->Self();
  SendMessageA(self, WM_NCDESTROY, 0, 0);
  DropQueuesOf(self);
  Forget(self);
  if (window->IsTop() && TheDesk().front != nullptr) TheDesk().front->Gone(self);
  Unlink(*window);
  if (window->dialog && window->dialog->font != nullptr) DeleteObject(window->dialog->font);
  gfx::HandleTable::Instance().Remove(self);
}

void End(const WindowRef& window) {
  if (window->ending) return;
  window->ending = true;
  const HWND self = window->Self();
  const std::vector<HWND> owned = window->owned;
  for (HWND each : owned) DestroyWindow(each);
  FinishDialog(*window, IDCANCEL);
  ShowWindow(self, SW_HIDE);
  Forsake(self);
  SendMessageA(self, WM_DESTROY, 0, 0);
  const std::vector<HWND> children = window->children;
  for (HWND each : children) {
    if (const WindowRef child = WindowOf(each)) End(child);
  }
  Finish(window);
}

WindowRef Make(const WindowClass& windowClass, const CREATESTRUCTA& create) {
  auto window = std::make_shared<Window>();
  window->windowClass = &windowClass;
  window->procedure = windowClass.procedure;
  window->style = static_cast<DWORD>(create.style) & ~WS_VISIBLE;
  window->text = create.lpszName != nullptr ? create.lpszName : "";
  window->parent = create.hwndParent;
  if (!window->IsTop()) window->id = static_cast<int>(reinterpret_cast<LONG_PTR>(create.hMenu));
  window->place = {create.x, create.y, create.x + create.cx, create.y + create.cy};
  window->invalid = window->Client();
  window->erase = true;
  if (gfx::HandleTable::Instance().Add(window) == nullptr) return nullptr;
  Link(*window);
  return window;
}

}  // namespace

void AddBuiltinClasses(Desk& desk) {
  const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
  AddClass(desk, "BUTTON", ButtonProcedure, arrow, nullptr);
  AddClass(desk, "STATIC", LabelProcedure, arrow, nullptr)->mousePassesThrough = true;
}

HWND RootOf(HWND window) {
  WindowRef each = WindowOf(window);
  while (each && !each->IsTop()) each = WindowOf(each->parent);
  return each ? each->Self() : nullptr;
}

bool Within(HWND ancestor, HWND window) {
  WindowRef each = WindowOf(window);
  while (each && each->Self() != ancestor) each = each->IsTop() ? nullptr : WindowOf(each->parent);
  return each != nullptr;
}

bool TakesInput(HWND window) {
  WindowRef each = WindowOf(window);
  while (each && each->Enabled() && !each->ending) {
    if (each->IsTop()) return true;
    each = WindowOf(each->parent);
  }
  return false;
}

std::size_t LiveWindows() { return TheDesk().windowCount; }

std::vector<HWND> TopLevelWindows() { return TheDesk().tops; }

}  // namespace ui

using ui::WindowOf;
using ui::WindowRef;

ATOM RegisterClassA(const WNDCLASSA* windowClass) {
  if (windowClass == nullptr || windowClass->lpszClassName == nullptr ||
      IS_INTRESOURCE(windowClass->lpszClassName) || *windowClass->lpszClassName == '\0' ||
      windowClass->lpfnWndProc == nullptr) {
    return 0;
  }
  ui::Desk& desk = ui::TheDesk();
  if (desk.classes.count(ui::LowerCase(windowClass->lpszClassName)) != 0) return 0;
  ui::AddClass(desk, windowClass->lpszClassName, windowClass->lpfnWndProc, windowClass->hCursor,
               windowClass->hbrBackground);
  return static_cast<ATOM>(desk.classes.size());
}

HWND CreateWindowExA(DWORD exStyle, const char* className, const char* text, DWORD style, int x,
                     int y, int width, int height, HWND parent, HANDLE menu, HINSTANCE instance,
                     void* parameter) {
  ui::Desk& desk = ui::TheDesk();
  if (className == nullptr || IS_INTRESOURCE(className)) return nullptr;
  const auto found = desk.classes.find(ui::LowerCase(className));
  if (found == desk.classes.end()) return nullptr;
  const bool child = (style & WS_CHILD) != 0;
  if (parent != nullptr || child) {
    const WindowRef over = WindowOf(parent);
    if (!over || over->ending) return nullptr;
    if (!child) parent = ui::RootOf(parent);
  }
  if (x == CW_USEDEFAULT || y == CW_USEDEFAULT) {
    const POINT at = child ? POINT{0, 0} : ui::Centred({width, height}, parent);
    x = at.x;
    y = at.y;
  }
  const RECT place = ui::LimitedPlace(x, y, width, height);
  CREATESTRUCTA create{parameter,
                       instance,
                       menu,
                       parent,
                       place.bottom - place.top,
                       place.right - place.left,
                       place.top,
                       place.left,
                       static_cast<LONG>(style),
                       text,
                       className,
                       exStyle};
  const WindowRef window = ui::Make(*found->second, create);
  if (!window) return nullptr;
  const HWND self = window->Self();
  const auto createParam = reinterpret_cast<LPARAM>(&create);
  if (SendMessageA(self, WM_NCCREATE, 0, createParam) == 0 ||
      SendMessageA(self, WM_CREATE, 0, createParam) == -1) {
    DestroyWindow(self);
    return nullptr;
  }
  if ((style & WS_VISIBLE) != 0) ShowWindow(self, SW_SHOW);
  return IsWindow(self) ? self : nullptr;
}

BOOL DestroyWindow(HWND window) {
  const WindowRef found = WindowOf(window);
  if (!found || found->ending) return FALSE;
  ui::End(found);
  return TRUE;
}

BOOL IsWindow(HWND window) { return WindowOf(window) != nullptr; }

BOOL IsChild(HWND parent, HWND window) { return parent != window && ui::Within(parent, window); }

HWND GetParent(HWND window) {
  const WindowRef found = WindowOf(window);
  return found && IsWindow(found->parent) ? found->parent : nullptr;
}

BOOL EnableWindow(HWND window, BOOL enable) {
  const WindowRef found = WindowOf(window);
  if (!found) return FALSE;
  const bool was = (found->style & WS_DISABLED) != 0;
  if (was == (enable == FALSE)) return was;
  found->style ^= WS_DISABLED;
  if (enable == FALSE) ui::Forsake(window);
  SendMessageA(window, WM_ENABLE, enable != FALSE, 0);
  InvalidateRect(window, nullptr, TRUE);
  return was;
}

BOOL IsWindowEnabled(HWND window) {
  const WindowRef found = WindowOf(window);
  return found && found->Enabled();
}

BOOL SetWindowTextA(HWND window, const char* text) {
  return WindowOf(window) && SendMessageA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
}

int GetWindowTextA(HWND window, char* text, int size) {
  if (text == nullptr || size <= 0) return 0;
  const WindowRef found = WindowOf(window);
  const std::size_t length = found ? std::min<std::size_t>(found->text.size(), size - 1) : 0;
  if (found) std::memcpy(text, found->text.data(), length);
  text[length] = '\0';
  return static_cast<int>(length);
}

LONG_PTR GetWindowLongPtrA(HWND window, int index) {
  const WindowRef found = WindowOf(window);
  if (!found) return 0;
  switch (index) {
    case GWL_STYLE:
      return static_cast<LONG_PTR>(found->style);
    case GWLP_WNDPROC:
      return reinterpret_cast<LONG_PTR>(found->procedure);
    case GWLP_ID:
      return found->id;
    case GWLP_USERDATA:
      return found->userData;
    default:
      return 0;
  }
}

LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value) {
  const WindowRef found = WindowOf(window);
  if (!found) return 0;
  const LONG_PTR before = GetWindowLongPtrA(window, index);
  switch (index) {
    case GWL_STYLE: {
      // Whether a window is a child, shown or enabled is not changed by the way.
      const DWORD fixed = WS_CHILD | WS_VISIBLE | WS_DISABLED;
      found->style = (found->style & fixed) | (static_cast<DWORD>(value) & ~fixed);
      break;
    }
    case GWLP_WNDPROC:
      if (value != 0) found->procedure = reinterpret_cast<WNDPROC>(value);
      break;
    case GWLP_ID:
      found->id = static_cast<int>(value);
      break;
    case GWLP_USERDATA:
      found->userData = value;
      break;
    default:
      break;
  }
  return before;
}
