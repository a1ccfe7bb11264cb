// A front without a screen: a clock that only moves when told, input from a script, pictures on
// request.
#pragma once

#include <deque>
#include <functional>
#include <map>

#include "platform/ui/front.h"

namespace ui {

// Becomes the current front when made, and "DISPLAY" contexts measure with its text engine; when it
// ends, the front before comes back, and all windows made meanwhile are destroyed. Nothing sleeps:
// waiting moves the clock to the next timer at once. Input functions feed one gesture and carry out
// all that follows from it (RunUntilIdle), so a test reads top to bottom. Inside of modal calls (a
// dialog that returns a result) steps queued with Then go on.
class Headless : public Front {
 public:
  explicit Headless(gfx::TextEngine& text = gfx::BuiltinText(), SIZE screen = {1920, 1080});
  ~Headless() override;

  // ---- script: `window` may be a child, positions count from its client area ----
  void MoveTo(HWND window, int x, int y);
  void Press(HWND window, int x, int y, MouseButton button = MouseButton::kLeft);
  void Release(HWND window, int x, int y, MouseButton button = MouseButton::kLeft);
  void Click(HWND window, int x, int y, MouseButton button = MouseButton::kLeft);
  // In the middle of a window.
  void Click(HWND window);
  // Press, `steps` moves along a straight line, release.
  void Drag(HWND window, POINT from, POINT to, int steps = 4);
  // A key of the active window, pressed and released; `shift` held meanwhile.
  void Key(WORD key, bool shift = false);
  void Resize(HWND top, int width, int height);
  void Close(HWND top);
  // A step for later: one is taken whenever nothing else is left to do.
  void Then(std::function<void()> step);

  // ---- running ----
  // Everything that is due now, steps included; the clock stands. False where messages kept coming
  // without end (a million): something repaints or posts for ever.
  bool RunUntilIdle();
  // Moves the clock on by `ms`, timer by timer.
  bool RunFor(std::int64_t ms);

  // ---- what happened ----
  // Paints what is invalid and returns the window's picture.
  gfx::Surface Picture(HWND window);
  // Times the window's picture was shown.
  int Presented(HWND top) const;
  // Steps not taken yet.
  std::size_t StepsLeft() const { return steps_.size(); }

  // Modal waits give up after this much time of the clock without input or steps.
  static constexpr std::int64_t kPatienceMs = 60'000;

  std::int64_t Now() override { return now_; }
  bool Wait(std::int64_t dueMs) override;
  gfx::TextEngine& Text() override { return text_; }
  SIZE Screen() override { return screen_; }
  void Present(HWND window, const gfx::Surface& picture, const RECT& dirty) override;

 private:
  bool TakeStep();

  gfx::TextEngine& text_;
  const SIZE screen_;
  Front* const before_;
  gfx::TextEngine* const displayBefore_;
  const std::vector<HWND> windowsBefore_;
  std::int64_t now_ = 0;
  std::int64_t lastInput_ = 0;
  bool inStep_ = false;
  std::deque<std::function<void()>> steps_;
  std::map<HWND, int> presented_;
};

}  // namespace ui
