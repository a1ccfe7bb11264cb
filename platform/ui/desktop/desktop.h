// The desktop as a front: each top-level window is a window of the desktop, drawn by SDL.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/ui/front.h"

struct SDL_Window;
struct SDL_Cursor;
union SDL_Event;

namespace ui {

// Becomes the current front when made, until it ends; windows should be gone before that. One at a
// time, on the main thread.
//
// Pixels: a window's client area has as many pixels as its surface, on high-resolution displays
// too; nothing is magnified. What makes dialogs readable there is the layout scale, which Open
// sets. Plots draw their lines and fonts in the sizes the program asks for. While the user drags a
// window's edge, some desktops hold the program; it repaints afterwards.
class Desktop final : public Front {
 public:
  // `scalePercent` becomes the layout scale; 0 takes the environment variable ELUGRAPH_SCALE, or
  // the display's resolution in steps of 50 % of 96 dots per inch, rounded down. Null, with the
  // cause in `error`, where there is no display.
  static std::unique_ptr<Desktop> Open(std::string& error, int scalePercent = 0);
  ~Desktop() override;

  std::int64_t Now() override;
  // False where no window is shown and no timer runs.
  bool Wait(std::int64_t dueMs) override;
  gfx::TextEngine& Text() override;
  SIZE Screen() override;

  void Shown(HWND window) override;
  void Gone(HWND window) override;
  void Placed(HWND window) override;
  void Renamed(HWND window) override;
  void Raised(HWND window) override;
  void Present(HWND window, const gfx::Surface& picture, const RECT& dirty) override;
  void CursorChanged(HCURSOR cursor) override;
  void CaptureChanged(bool captured) override;

 private:
  Desktop();

  HWND WindowOfId(unsigned id) const;
  SDL_Window* Find(HWND window) const;
  void Handle(const SDL_Event& event);
  void HandleWindow(const SDL_Event& event);
  SDL_Cursor* CursorOf(HCURSOR cursor);

  std::map<HWND, SDL_Window*> windows_;
  std::map<HCURSOR, SDL_Cursor*> cursors_;
  Front* before_;
};

}  // namespace ui
