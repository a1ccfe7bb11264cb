// Invalid parts, contexts of windows, and the picture that a top-level window shows.
#include <algorithm>

#include "platform/gfx/context.h"
#include "platform/ui/desk.h"

namespace ui {
namespace {

void CopyOverlap(const gfx::Surface& from, gfx::Surface& to) {
  const int width = std::min(from.Width(), to.Width());
  const int height = std::min(from.Height(), to.Height());
  for (int y = 0; y < height; ++y) std::copy_n(from.Row(y), width, to.Row(y));
}

// Larger windows show nothing.
constexpr std::int64_t kMaxPixels = std::int64_t{1} << 26;

bool TooLarge(const Window& window) {
  return std::int64_t{window.Width()} * window.Height() > kMaxPixels;
}

COLORREF EmptyColor() { return GetSysColor(COLOR_3DFACE); }

// The surface gets the window's extent; old pixels stay where they are.
void FitSurface(Window& window) {
  const int width = window.Width(), height = window.Height();
  if (window.surface && window.surface->Width() == width && window.surface->Height() == height) {
    return;
  }
  if (TooLarge(window)) {
    window.surface = nullptr;
    return;
  }
  try {
    auto fitted = std::make_shared<gfx::Surface>(width, height, EmptyColor());
    if (window.surface) CopyOverlap(*window.surface, *fitted);
    window.surface = std::move(fitted);
  } catch (const std::bad_alloc&) {
    window.surface = nullptr;
  }
}

HDC MakeContext(Window& window) {
  FitSurface(window);
  if (!window.surface) return nullptr;
  const HDC hdc = gfx::CreateRasterContext(*window.surface, WindowText());
  if (hdc != nullptr) TheDesk().contexts[hdc] = {window.Self(), window.surface};
  return hdc;
}

bool DropContext(HDC hdc) {
  Desk& desk = TheDesk();
  const auto found = desk.contexts.find(hdc);
  if (found == desk.contexts.end()) return false;
  DeleteDC(hdc);
  desk.contexts.erase(found);
  return true;
}

// The first window (parents before children) of the tree that has something to paint.
HWND NextInvalid(const Window& window) {
  if (!window.Visible() || window.ending) return nullptr;
  if (!IsRectEmpty(window.invalid)) return window.Self();
  for (HWND each : window.children) {
    const WindowRef child = WindowOf(each);
    if (!child) continue;
    if (const HWND found = NextInvalid(*child)) return found;
  }
  return nullptr;
}

void SendPaint(const WindowRef& window) {
  window->paintTaken = false;
  SendMessageA(window->Self(), WM_PAINT, 0, 0);
  // A procedure that does not answer would be asked for ever.
  if (!window->paintTaken) ValidateRect(window->Self(), nullptr);
}

// Copies `part` of the window and its children into `picture`; `part` in the window's client
// coordinates, `offset` leads from there to the picture.
void Compose(const Window& window, const RECT& part, POINT offset, gfx::Surface& picture) {
  const RECT clip =
      Intersection(Intersection(part, window.Client()),
                   Moved({0, 0, picture.Width(), picture.Height()}, {-offset.x, -offset.y}));
  if (IsRectEmpty(clip)) return;
  const std::uint32_t empty = gfx::PixelOf(EmptyColor());
  for (LONG y = clip.top; y < clip.bottom; ++y) {
    std::uint32_t* to = picture.Row(y + offset.y) + clip.left + offset.x;
    const LONG count = clip.right - clip.left;
    // A window that grew is not painted yet where it is new.
    LONG painted = 0;
    if (window.surface && y < window.surface->Height()) {
      painted = std::clamp<LONG>(window.surface->Width() - clip.left, 0, count);
      std::copy_n(window.surface->Row(y) + clip.left, painted, to);
    }
    std::fill_n(to + painted, count - painted, empty);
  }
  for (HWND each : window.children) {
    const WindowRef child = WindowOf(each);
    if (!child || !child->Visible()) continue;
    const POINT at{child->place.left, child->place.top};
    Compose(*child, Moved(clip, {-at.x, -at.y}), {offset.x + at.x, offset.y + at.y}, picture);
  }
}

}  // namespace

void MarkShown(const Window& window, const RECT& part) {
  RECT shown = Intersection(part, window.Client());
  const Window* each = &window;
  WindowRef parent;
  while (!each->IsTop()) {
    if (!each->Visible()) return;
    shown = Moved(shown, {each->place.left, each->place.top});
    parent = WindowOf(each->parent);
    if (!parent) return;
    each = parent.get();
    shown = Intersection(shown, each->Client());
  }
  const WindowRef top = WindowOf(each->Self());
  if (top) top->dirty = Enclosing(top->dirty, shown);
}

bool PaintNext() {
  const std::vector<HWND> tops = TheDesk().tops;
  for (HWND each : tops) {
    const WindowRef top = WindowOf(each);
    const HWND next = top ? NextInvalid(*top) : nullptr;
    if (next == nullptr) continue;
    SendPaint(WindowOf(next));
    return true;
  }
  return false;
}

bool PresentAll() {
  Desk& desk = TheDesk();
  bool any = false;
  const std::vector<HWND> tops = desk.tops;
  for (HWND each : tops) {
    const WindowRef top = WindowOf(each);
    if (!top || !top->Visible()) continue;
    const RECT dirty = Intersection(top->dirty, top->Client());
    top->dirty = {0, 0, 0, 0};
    if (IsRectEmpty(dirty) || TooLarge(*top)) continue;
    RECT part = dirty;
    if (top->shown.Width() != top->Width() || top->shown.Height() != top->Height()) {
      top->shown = gfx::Surface(top->Width(), top->Height(), EmptyColor());
      part = top->Client();
    }
    Compose(*top, part, {0, 0}, top->shown);
    if (desk.front != nullptr) desk.front->Present(each, top->shown, part);
    any = true;
  }
  return any;
}

gfx::Surface PictureOf(HWND window) {
  const WindowRef found = WindowOf(window);
  if (!found || TooLarge(*found)) return {};
  gfx::Surface picture(found->Width(), found->Height(), EmptyColor());
  Compose(*found, found->Client(), {0, 0}, picture);
  return picture;
}

}  // namespace ui

using ui::WindowOf;
using ui::WindowRef;

BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase) {
  const WindowRef found = WindowOf(window);
  if (!found) return FALSE;
  const RECT client = found->Client();
  const RECT part = rect != nullptr ? ui::Intersection(*rect, client) : client;
  if (IsRectEmpty(part)) return TRUE;
  found->invalid = ui::Enclosing(found->invalid, part);
  found->erase = found->erase || erase != FALSE;
  return TRUE;
}

BOOL ValidateRect(HWND window, const RECT* rect) {
  const WindowRef found = WindowOf(window);
  if (!found) return FALSE;
  const RECT invalid = found->invalid;
  if (rect != nullptr && !IsRectEmpty(invalid)) {
    const RECT both = ui::Intersection(*rect, invalid);
    if (both.left != invalid.left || both.top != invalid.top || both.right != invalid.right ||
        both.bottom != invalid.bottom) {
      return TRUE;
    }
  }
  found->invalid = {0, 0, 0, 0};
  found->erase = false;
  found->paintTaken = true;
  return TRUE;
}

BOOL GetUpdateRect(HWND window, RECT* rect, BOOL) {
  const WindowRef found = WindowOf(window);
  if (rect != nullptr) *rect = found ? found->invalid : RECT{0, 0, 0, 0};
  return found && !IsRectEmpty(found->invalid);
}

BOOL UpdateWindow(HWND window) {
  const WindowRef found = WindowOf(window);
  if (!found) return FALSE;
  if (ui::ShownOnScreen(*found) && !IsRectEmpty(found->invalid)) ui::SendPaint(found);
  return TRUE;
}

HDC BeginPaint(HWND window, PAINTSTRUCT* paint) {
  if (paint == nullptr) return nullptr;
  *paint = {};
  const WindowRef found = WindowOf(window);
  if (!found) return nullptr;
  paint->rcPaint = found->invalid;
  const bool erase = found->erase;
  ValidateRect(window, nullptr);
  paint->hdc = ui::MakeContext(*found);
  if (paint->hdc == nullptr) return nullptr;
  const RECT& part = paint->rcPaint;
  IntersectClipRect(paint->hdc, part.left, part.top, part.right, part.bottom);
  if (erase) {
    paint->fErase =
        SendMessageA(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(paint->hdc), 0) == 0;
  }
  return paint->hdc;
}

BOOL EndPaint(HWND window, const PAINTSTRUCT* paint) {
  if (paint == nullptr) return FALSE;
  if (const WindowRef found = WindowOf(window)) ui::MarkShown(*found, paint->rcPaint);
  return ui::DropContext(paint->hdc);
}

HDC GetDC(HWND window) {
  if (window == nullptr) return CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  const WindowRef found = WindowOf(window);
  return found ? ui::MakeContext(*found) : nullptr;
}

int ReleaseDC(HWND window, HDC hdc) {
  const auto& contexts = ui::TheDesk().contexts;
  const auto context = contexts.find(hdc);
  if (context == contexts.end()) return window == nullptr ? DeleteDC(hdc) : 0;
  if (context->second.window != window) return 0;
  if (const WindowRef found = WindowOf(window)) ui::MarkShown(*found, found->Client());
  return ui::DropContext(hdc);
}

HWND WindowFromDC(HDC hdc) {
  const auto& contexts = ui::TheDesk().contexts;
  const auto context = contexts.find(hdc);
  return context != contexts.end() && IsWindow(context->second.window) ? context->second.window
                                                                       : nullptr;
}
