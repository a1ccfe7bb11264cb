#include "platform/ui/desktop/desktop.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "platform/gfx/context.h"
#include "platform/ui/desktop/keys.h"
#include "platform/ui/resources.h"

namespace ui {
namespace {

constexpr std::int64_t kLookMs = 8;  // longest delay before input is seen

// Window units (which positions of the mouse count in) and pixels differ on some desktops.
struct Ratio {
  explicit Ratio(SDL_Window* window) {
    SDL_GetWindowSize(window, &units.x, &units.y);
    SDL_GetWindowSizeInPixels(window, &pixels.x, &pixels.y);
  }
  static int Share(int value, int of, int whole) {
    if (whole <= 0) return value;
    return static_cast<int>(std::floor(double(value) * of / whole));
  }
  POINT ToPixels(int x, int y) const {
    return {Share(x, pixels.x, units.x), Share(y, pixels.y, units.y)};
  }
  SDL_Point ToUnits(int x, int y) const {
    return {Share(x, units.x, pixels.x), Share(y, units.y, pixels.y)};
  }
  SDL_Point units{}, pixels{};
};

[[maybe_unused]] bool HasVariable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

int ScaleOfDisplay() {
  if (const char* wanted = std::getenv("ELUGRAPH_SCALE")) {
    if (const int percent = std::atoi(wanted); percent > 0) return percent;
  }
  float dpi = 96;
  if (SDL_GetDisplayDPI(0, &dpi, nullptr, nullptr) != 0 || !(dpi > 0)) return 100;
  return static_cast<int>(std::min(dpi, 960.0f) / 48) * 50;
}

SDL_SystemCursor SystemCursorOf(unsigned number) {
  switch (number) {
    case 32513:
      return SDL_SYSTEM_CURSOR_IBEAM;
    case 32514:
      return SDL_SYSTEM_CURSOR_WAIT;
    case 32515:
      return SDL_SYSTEM_CURSOR_CROSSHAIR;
    case 32644:
      return SDL_SYSTEM_CURSOR_SIZEWE;
    case 32645:
      return SDL_SYSTEM_CURSOR_SIZENS;
    case 32649:
      return SDL_SYSTEM_CURSOR_HAND;
    default:
      return SDL_SYSTEM_CURSOR_ARROW;
  }
}

SDL_Cursor* MakeCursor(HCURSOR cursor) {
  Image image = ImageOf(cursor, GetSystemMetrics(SM_CXCURSOR));
  if (image.width == 0) return SDL_CreateSystemCursor(SystemCursorOf(SystemCursorNumber(cursor)));
  SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormatFrom(
      image.argb.data(), image.width, image.height, 32, image.width * 4, SDL_PIXELFORMAT_ARGB8888);
  if (surface == nullptr) return nullptr;
  SDL_Cursor* made = SDL_CreateColorCursor(surface, image.hotSpot.x, image.hotSpot.y);
  SDL_FreeSurface(surface);
  return made;
}

bool Resizable(HWND window) {
  return (GetWindowLongPtrA(window, GWL_STYLE) & static_cast<LONG_PTR>(WS_THICKFRAME)) != 0;
}

std::string TitleOf(HWND window) {
  char title[512];
  GetWindowTextA(window, title, sizeof title);
  return title;
}

// Copies the dirty part to the screen, or what of it the desktop's window has.
void Show(SDL_Window* window, const gfx::Surface& picture, const RECT& dirty) {
  SDL_Surface* target = SDL_GetWindowSurface(window);
  if (target == nullptr || picture.Width() == 0 || picture.Height() == 0) return;
  // The pixels are only read from.
  auto* pixels = const_cast<std::uint32_t*>(picture.Row(0));
  SDL_Surface* source = SDL_CreateRGBSurfaceWithFormatFrom(
      pixels, picture.Width(), picture.Height(), 32, picture.Width() * 4, SDL_PIXELFORMAT_XRGB8888);
  if (source == nullptr) return;
  SDL_Rect from{dirty.left, dirty.top, dirty.right - dirty.left, dirty.bottom - dirty.top};
  SDL_Rect to = from;
  SDL_SetSurfaceBlendMode(source, SDL_BLENDMODE_NONE);
  SDL_BlitSurface(source, &from, target, &to);
  SDL_UpdateWindowSurfaceRects(window, &to, 1);
  SDL_FreeSurface(source);
}

bool IsX11() { return std::string_view(SDL_GetCurrentVideoDriver()) == "x11"; }

// False where no event came in time. While SDL waits on X it sends itself messages through a second
// connection; one that meets a window which has just closed ends the program. Looking for events
// again and again does without them.
bool WaitForEvent(SDL_Event& event, std::int64_t ms) {
  if (!IsX11()) return SDL_WaitEventTimeout(&event, static_cast<int>(ms)) != 0;
  const auto end = static_cast<std::int64_t>(SDL_GetTicks64()) + ms;
  while (SDL_PollEvent(&event) == 0) {
    const std::int64_t left = end - static_cast<std::int64_t>(SDL_GetTicks64());
    if (left <= 0) return false;
    SDL_Delay(static_cast<Uint32>(std::min(left, kLookMs)));
  }
  return true;
}

}  // namespace

std::unique_ptr<Desktop> Desktop::Open(std::string& error, int scalePercent) {
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  SDL_SetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0");
  SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
  SDL_SetHint(SDL_HINT_WINDOWS_DPI_AWARENESS, "permonitorv2");
#ifdef __linux__
  // Left alone, SDL looks for all kinds of displays, and takes in the end one that nobody sees.
  if (!HasVariable("SDL_VIDEODRIVER") && !HasVariable("WAYLAND_DISPLAY")) {
    if (!HasVariable("DISPLAY")) {
      error = "no display: neither DISPLAY nor WAYLAND_DISPLAY is set";
      return nullptr;
    }
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "x11");
  }
#endif
  if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
    error = std::string("no display: ") + SDL_GetError();
    return nullptr;
  }
  // Otherwise the first picture of a window puts another one in its place, which has seen none of
  // the mouse until then.
  if (IsX11()) SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  SDL_EnableScreenSaver();
  SDL_StartTextInput();
  SetScale(scalePercent > 0 ? scalePercent : ScaleOfDisplay());
  return std::unique_ptr<Desktop>(new Desktop);
}

Desktop::Desktop() : before_(SetFront(this)) {}

Desktop::~Desktop() {
  SetFront(before_);
  for (const auto& [window, shown] : windows_) SDL_DestroyWindow(shown);
  for (const auto& [cursor, made] : cursors_) SDL_FreeCursor(made);
  SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

std::int64_t Desktop::Now() { return static_cast<std::int64_t>(SDL_GetTicks64()); }

gfx::TextEngine& Desktop::Text() { return gfx::SystemText(); }

SIZE Desktop::Screen() {
  SDL_Rect bounds{0, 0, 0, 0};
  if (SDL_GetDisplayUsableBounds(0, &bounds) != 0) SDL_GetDisplayBounds(0, &bounds);
  return {bounds.w, bounds.h};
}

bool Desktop::Wait(std::int64_t dueMs) {
  if (windows_.empty() && dueMs == kNever) return false;
  constexpr std::int64_t kLongestWaitMs = 60'000;
  const std::int64_t wait = std::clamp<std::int64_t>(dueMs - Now(), 0, kLongestWaitMs);
  SDL_Event event;
  if (!WaitForEvent(event, wait)) return true;
  do {
    Handle(event);
  } while (SDL_PollEvent(&event) != 0);
  return true;
}

HWND Desktop::WindowOfId(unsigned id) const {
  for (const auto& [window, shown] : windows_) {
    if (SDL_GetWindowID(shown) == id) return window;
  }
  // Keys may come without a window where no window manager hands out the focus.
  return GetActiveWindow();
}

SDL_Window* Desktop::Find(HWND window) const {
  const auto found = windows_.find(window);
  return found != windows_.end() ? found->second : nullptr;
}

// ---- windows ------------------------------------------------------------------------------------

void Desktop::Shown(HWND window) {
  RECT place{0, 0, 0, 0};
  if (Find(window) != nullptr || !GetWindowRect(window, &place)) return;
  const int width = std::max<LONG>(1, place.right - place.left);
  const int height = std::max<LONG>(1, place.bottom - place.top);
  Uint32 flags = SDL_WINDOW_HIDDEN | SDL_WINDOW_ALLOW_HIGHDPI;
  if (Resizable(window)) flags |= SDL_WINDOW_RESIZABLE;
  SDL_Window* shown =
      SDL_CreateWindow(TitleOf(window).c_str(), place.left, place.top, width, height, flags);
  if (shown == nullptr) return;
  windows_[window] = shown;
  const SDL_Point units = Ratio(shown).ToUnits(width, height);
  if (units.x != width || units.y != height) SDL_SetWindowSize(shown, units.x, units.y);
  const SDL_Point least = Ratio(shown).ToUnits(240 * Scale() / 100, 160 * Scale() / 100);
  if (Resizable(window)) {
    SDL_SetWindowMinimumSize(shown, std::min(least.x, units.x), std::min(least.y, units.y));
  }
  if (SDL_Window* owner = Find(GetParent(window))) SDL_SetWindowModalFor(shown, owner);
  SDL_ShowWindow(shown);
}

void Desktop::Gone(HWND window) {
  SDL_Window* shown = Find(window);
  if (shown == nullptr) return;
  windows_.erase(window);
  SDL_DestroyWindow(shown);
}

void Desktop::Placed(HWND window) {
  SDL_Window* shown = Find(window);
  RECT place{0, 0, 0, 0};
  if (shown == nullptr || !GetWindowRect(window, &place)) return;
  const SDL_Point units = Ratio(shown).ToUnits(place.right - place.left, place.bottom - place.top);
  SDL_SetWindowSize(shown, std::max(1, units.x), std::max(1, units.y));
  SDL_SetWindowPosition(shown, place.left, place.top);
}

void Desktop::Renamed(HWND window) {
  if (SDL_Window* shown = Find(window)) SDL_SetWindowTitle(shown, TitleOf(window).c_str());
}

void Desktop::Raised(HWND window) {
  SDL_Window* shown = Find(window);
  if (shown == nullptr) return;
  SDL_RaiseWindow(shown);
  // Where no window manager does it. Desktops that do not let programs say so refuse.
  SDL_SetWindowInputFocus(shown);
}

void Desktop::Present(HWND window, const gfx::Surface& picture, const RECT& dirty) {
  if (SDL_Window* shown = Find(window)) Show(shown, picture, dirty);
}

// ---- cursors ------------------------------------------------------------------------------------

SDL_Cursor* Desktop::CursorOf(HCURSOR cursor) {
  SDL_Cursor*& made = cursors_[cursor];
  if (made == nullptr) made = MakeCursor(cursor);
  return made;
}

void Desktop::CursorChanged(HCURSOR cursor) {
  SDL_ShowCursor(cursor != nullptr ? SDL_ENABLE : SDL_DISABLE);
  if (SDL_Cursor* made = cursor != nullptr ? CursorOf(cursor) : nullptr) SDL_SetCursor(made);
}

void Desktop::CaptureChanged(bool captured) { SDL_CaptureMouse(captured ? SDL_TRUE : SDL_FALSE); }

// ---- events -------------------------------------------------------------------------------------

void Desktop::Handle(const SDL_Event& event) {
  const auto position = [this](HWND window, int x, int y) {
    SDL_Window* shown = Find(window);
    return shown != nullptr ? Ratio(shown).ToPixels(x, y) : POINT{x, y};
  };
  switch (event.type) {
    case SDL_WINDOWEVENT:
      return HandleWindow(event);
    case SDL_MOUSEMOTION: {
      const HWND window = WindowOfId(event.motion.windowID);
      return FeedMouseMove(window, position(window, event.motion.x, event.motion.y));
    }
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
      const HWND window = WindowOfId(event.button.windowID);
      if (event.button.button > SDL_BUTTON_RIGHT) return;
      const MouseButton button = event.button.button == SDL_BUTTON_LEFT    ? MouseButton::kLeft
                                 : event.button.button == SDL_BUTTON_RIGHT ? MouseButton::kRight
                                                                           : MouseButton::kMiddle;
      return FeedMouseButton(window, button, event.type == SDL_MOUSEBUTTONDOWN,
                             position(window, event.button.x, event.button.y));
    }
    case SDL_MOUSEWHEEL: {
      const HWND window = WindowOfId(event.wheel.windowID);
      return FeedMouseWheel(window, 120 * event.wheel.y,
                            position(window, event.wheel.mouseX, event.wheel.mouseY));
    }
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      if (const WORD key = KeyOfSymbol(event.key.keysym.sym)) {
        FeedKey(WindowOfId(event.key.windowID), key, event.type == SDL_KEYDOWN);
      }
      return;
    case SDL_TEXTINPUT:
      for (const char* each = event.text.text; *each != '\0'; ++each) {
        FeedCharacter(WindowOfId(event.text.windowID), *each);
      }
      return;
    case SDL_QUIT:
      for (HWND each : TopLevelWindows()) {
        if (GetParent(each) == nullptr) FeedClose(each);
      }
      return;
    default:
      return;
  }
}

void Desktop::HandleWindow(const SDL_Event& event) {
  const HWND window = WindowOfId(event.window.windowID);
  SDL_Window* shown = Find(window);
  if (shown == nullptr || SDL_GetWindowID(shown) != event.window.windowID) return;
  switch (event.window.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED: {
      const SDL_Point pixels = Ratio(shown).pixels;
      return FeedResize(window, {pixels.x, pixels.y});
    }
    case SDL_WINDOWEVENT_MOVED:
      return FeedMove(window, {event.window.data1, event.window.data2});
    case SDL_WINDOWEVENT_EXPOSED: {
      const gfx::Surface picture = PictureOf(window);
      return Show(shown, picture, {0, 0, picture.Width(), picture.Height()});
    }
    case SDL_WINDOWEVENT_FOCUS_GAINED:
      return FeedActivate(window, true);
    case SDL_WINDOWEVENT_FOCUS_LOST:
      return FeedActivate(window, false);
    case SDL_WINDOWEVENT_LEAVE:
      return FeedMouseLeave(window);
    case SDL_WINDOWEVENT_CLOSE:
      return FeedClose(window);
    default:
      return;
  }
}

}  // namespace ui
