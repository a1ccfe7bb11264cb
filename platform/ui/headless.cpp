#include "platform/ui/headless.h"

#include <algorithm>

#include "platform/gfx/context.h"

namespace ui {
namespace {

constexpr int kEndless = 1'000'000;

HWND Root(HWND window) {
  while (IsWindow(window) && (GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD) != 0) {
    window = GetParent(window);
  }
  return window;
}

// Position in the top-level window.
POINT InRoot(HWND window, int x, int y) {
  POINT at{x, y};
  ClientToScreen(window, &at);
  ScreenToClient(Root(window), &at);
  return at;
}

}  // namespace

Headless::Headless(gfx::TextEngine& text, SIZE screen)
    : text_(text),
      screen_(screen),
      before_(SetFront(this)),
      displayBefore_(gfx::SetDisplayText(&text)),
      windowsBefore_(TopLevelWindows()) {}

Headless::~Headless() {
  steps_.clear();
  const std::vector<HWND> windows = TopLevelWindows();
  for (HWND each : windows) {
    const bool old = std::count(windowsBefore_.begin(), windowsBefore_.end(), each) != 0;
    if (!old) DestroyWindow(each);
  }
  gfx::SetDisplayText(displayBefore_);
  SetFront(before_);
}

void Headless::MoveTo(HWND window, int x, int y) {
  FeedMouseMove(Root(window), InRoot(window, x, y));
  RunUntilIdle();
}

void Headless::Press(HWND window, int x, int y, MouseButton button) {
  FeedMouseMove(Root(window), InRoot(window, x, y));
  FeedMouseButton(Root(window), button, true, InRoot(window, x, y));
  RunUntilIdle();
}

void Headless::Release(HWND window, int x, int y, MouseButton button) {
  FeedMouseMove(Root(window), InRoot(window, x, y));
  FeedMouseButton(Root(window), button, false, InRoot(window, x, y));
  RunUntilIdle();
}

void Headless::Click(HWND window, int x, int y, MouseButton button) {
  Press(window, x, y, button);
  Release(window, x, y, button);
}

void Headless::Click(HWND window) {
  RECT client{0, 0, 0, 0};
  GetClientRect(window, &client);
  Click(window, client.right / 2, client.bottom / 2);
}

void Headless::Drag(HWND window, POINT from, POINT to, int steps) {
  Press(window, from.x, from.y);
  for (int step = 1; step <= steps; ++step) {
    MoveTo(window, from.x + (to.x - from.x) * step / steps,
           from.y + (to.y - from.y) * step / steps);
  }
  Release(window, to.x, to.y);
}

void Headless::Key(WORD key, bool shift) {
  const HWND top = GetActiveWindow();
  if (shift) FeedKey(top, VK_SHIFT, true);
  FeedKey(top, key, true);
  FeedKey(top, key, false);
  if (shift) FeedKey(top, VK_SHIFT, false);
  RunUntilIdle();
}

void Headless::Resize(HWND top, int width, int height) {
  FeedResize(top, {width, height});
  RunUntilIdle();
}

void Headless::Close(HWND top) {
  FeedClose(top);
  RunUntilIdle();
}

void Headless::Then(std::function<void()> step) { steps_.push_back(std::move(step)); }

bool Headless::TakeStep() {
  if (steps_.empty() || inStep_) return false;
  const auto step = std::move(steps_.front());
  steps_.pop_front();
  inStep_ = true;
  step();
  inStep_ = false;
  return true;
}

bool Headless::RunUntilIdle() {
  lastInput_ = now_;
  for (int count = 0; count < kEndless; ++count) {
    if (!Step() && !TakeStep()) return true;
  }
  return false;
}

bool Headless::RunFor(std::int64_t ms) {
  const std::int64_t end = now_ + std::max<std::int64_t>(0, ms);
  bool idle = RunUntilIdle();
  while (idle && NextTimerDue() <= end) {
    now_ = std::max(now_, NextTimerDue());
    idle = RunUntilIdle();
  }
  now_ = end;
  return idle;
}

bool Headless::Wait(std::int64_t dueMs) {
  if (TakeStep()) {
    lastInput_ = now_;
    return true;
  }
  if (dueMs == kNever || dueMs > lastInput_ + kPatienceMs) return false;
  now_ = std::max(now_, dueMs);
  return true;
}

gfx::Surface Headless::Picture(HWND window) {
  RunUntilIdle();
  return PictureOf(window);
}

int Headless::Presented(HWND top) const {
  const auto found = presented_.find(top);
  return found != presented_.end() ? found->second : 0;
}

void Headless::Present(HWND window, const gfx::Surface&, const RECT&) { ++presented_[window]; }

}  // namespace ui
