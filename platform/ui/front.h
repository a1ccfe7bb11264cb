// What stands between the windows and the world: a front brings time and input, and shows pictures.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"
#include "platform/ui/user.h"

namespace ui {

inline constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

// The windows call it; it calls the Feed functions. Windows can exist without a front: time then
// stands still and nothing is shown.
class Front {
 public:
  Front() = default;
  Front(const Front&) = delete;
  Front& operator=(const Front&) = delete;
  virtual ~Front() = default;

  virtual std::int64_t Now() = 0;  // ms, never going back
  // Called when nothing is left to do: waits for input, or until the clock says `dueMs` (kNever: no
  // timer runs). False where nothing more will come.
  virtual bool Wait(std::int64_t dueMs) = 0;
  // What window contexts measure and write with.
  virtual gfx::TextEngine& Text() = 0;
  virtual SIZE Screen() = 0;  // pixels

  // Top-level windows only. `Gone` may get a handle that is stale already.
  virtual void Shown(HWND) {}
  virtual void Gone(HWND) {}
  virtual void Placed(HWND) {}   // the program moved or resized it
  virtual void Renamed(HWND) {}  // its text changed
  virtual void Raised(HWND) {}   // to the front, with the keyboard
  // `dirty` of the window's picture has changed.
  virtual void Present(HWND, const gfx::Surface&, const RECT&) {}
  virtual void CursorChanged(HCURSOR) {}
  virtual void CaptureChanged(bool) {}
};

// Returns the front before; null for none. The front must outlive its use.
Front* SetFront(Front* front);
Front* CurrentFront();

// ---- input --------------------------------------------------------------------------------------

enum class MouseButton { kLeft, kRight, kMiddle };

// Input waits in a queue behind posted messages. `top` is a top-level window, positions are
// relative to its client area and may lie outside while a button is held. What a disabled or
// vanished window gets is dropped.
void FeedMouseMove(HWND top, POINT position);
void FeedMouseButton(HWND top, MouseButton button, bool down, POINT position);
void FeedMouseWheel(HWND top, int delta, POINT position);
void FeedMouseLeave(HWND top);
// VK_ code; goes to the focus.
void FeedKey(HWND top, WORD key, bool down);
void FeedCharacter(HWND top, char character);
// The user resized, moved, activated the window, or asked to close it.
void FeedResize(HWND top, SIZE extent);
void FeedMove(HWND top, POINT position);
void FeedActivate(HWND top, bool active);
void FeedClose(HWND top);

// ---- running ------------------------------------------------------------------------------------

// Carries out one thing that is ready, in this order: a posted message, input, the end of a dialog,
// a repaint, showing what was painted, a timer. False where nothing was.
bool Step();
// Steps and waits until `done` (checked after every step), PostQuitMessage, or until the front says
// that nothing more will come. True where `done`.
bool RunUntil(const std::function<bool()>& done);
// When the next timer is due; kNever where none runs.
std::int64_t NextTimerDue();
// True after PostQuitMessage until ResetQuit.
bool QuitPosted(int* exitCode = nullptr);
void ResetQuit();

// Sees every queued message (posted, input, timer) before it is dispatched; true swallows it.
using MessageFilter = bool (*)(const MSG& message);
MessageFilter SetMessageFilter(MessageFilter filter);

// Shows a dialog and returns; `done` gets its result when EndDialog ends it, or IDCANCEL when it is
// destroyed otherwise, before its window ends. `blockOwner`: the owner takes no input meanwhile.
// False for what is not a dialog, or is running already.
bool RunDialog(HWND dialog, std::function<void(LONG_PTR)> done, bool blockOwner);
// The same with the owner blocked, returning when the dialog has ended. Where nothing can end it
// any more (see RunUntil) it is ended with IDCANCEL.
LONG_PTR RunModalDialog(HWND dialog);

// ---- layout scale, pictures
// -----------------------------------------------------------------------

// Percent, limited to 100 … 400; 100 at the start. Dialogs made from now on, and metrics, follow.
void SetScale(int percent);
int Scale();

// What a window shows with its children; empty for what is not a window. Paints nothing: parts that
// are invalid show what they showed.
gfx::Surface PictureOf(HWND window);
// Visible and hidden windows that exist now, children included.
std::size_t LiveWindows();
// All top-level windows, oldest first.
std::vector<HWND> TopLevelWindows();

}  // namespace ui
