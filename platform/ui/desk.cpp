#include "platform/ui/desk.h"

#include <algorithm>

namespace ui {

Desk::Desk() : cursor(LoadCursorA(nullptr, IDC_ARROW)) { AddBuiltinClasses(*this); }

Desk& TheDesk() {
  static Desk* const desk = new Desk;
  return *desk;
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

Front* SetFront(Front* front) { return std::exchange(TheDesk().front, front); }

Front* CurrentFront() { return TheDesk().front; }

std::int64_t Now() { return TheDesk().front != nullptr ? TheDesk().front->Now() : 0; }

gfx::TextEngine& WindowText() {
  return TheDesk().front != nullptr ? TheDesk().front->Text() : gfx::SystemText();
}

void SetScale(int percent) { TheDesk().scale = std::clamp(percent, 100, 400); }

int Scale() { return TheDesk().scale; }

int Scaled(int length) {
  return static_cast<int>((std::int64_t{length} * TheDesk().scale + 50) / 100);
}

RECT Intersection(const RECT& a, const RECT& b) {
  const RECT both{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                  std::min(a.bottom, b.bottom)};
  return IsRectEmpty(both) ? RECT{0, 0, 0, 0} : both;
}

RECT Enclosing(const RECT& a, const RECT& b) {
  if (IsRectEmpty(a)) return b;
  if (IsRectEmpty(b)) return a;
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

RECT Moved(const RECT& rect, POINT by) {
  return {rect.left + by.x, rect.top + by.y, rect.right + by.x, rect.bottom + by.y};
}

}  // namespace ui

DWORD GetTickCount() { return static_cast<DWORD>(ui::Now()); }

int GetSystemMetrics(int index) {
  const ui::Desk& desk = ui::TheDesk();
  const SIZE screen = desk.front != nullptr ? desk.front->Screen() : SIZE{1920, 1080};
  switch (index) {
    case SM_CXSCREEN:
      return screen.cx;
    case SM_CYSCREEN:
      return screen.cy;
    case SM_CXBORDER:
    case SM_CYBORDER:
      return ui::Scaled(1);
    case SM_CXICON:
    case SM_CYICON:
    case SM_CXCURSOR:
    case SM_CYCURSOR:
      return ui::Scaled(32);
    case SM_CXEDGE:
    case SM_CYEDGE:
      return ui::Scaled(2);
    case SM_CXDRAG:
    case SM_CYDRAG:
      return ui::Scaled(4);
    default:
      return 0;
  }
}
