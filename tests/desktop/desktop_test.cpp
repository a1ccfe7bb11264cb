// The desktop front on SDL's driver without a screen: windows, pictures, events.
#include "platform/ui/desktop/desktop.h"

#include <SDL.h>

#include <cstdlib>

#include "platform/ui/desktop/keys.h"
#include "tests/support/probe.h"

namespace {

class OnDesktop : public probe::Fixture {
 protected:
  void SetUp() override {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    std::string error;
    desktop = ui::Desktop::Open(error, 100);
    ASSERT_NE(desktop, nullptr) << error;
  }
  void TearDown() override {
    probe::Fixture::TearDown();
    desktop.reset();
  }

  // What is ready, events of SDL included.
  static void Run() {
    int turns = 0;
    SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR id, DWORD) { KillTimer(nullptr, id); });
    ui::RunUntil([&] { return ++turns > 1 && ui::NextTimerDue() == ui::kNever; });
  }
  static SDL_Window* SdlWindow(HWND window) {
    char title[64];
    GetWindowTextA(window, title, sizeof title);
    for (Uint32 id = 1; id < 100; ++id) {
      SDL_Window* found = SDL_GetWindowFromID(id);
      if (found != nullptr && std::string(SDL_GetWindowTitle(found)) == title) return found;
    }
    return nullptr;
  }
  static void Push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 1); }

  std::unique_ptr<ui::Desktop> desktop;
};

TEST_F(OnDesktop, WindowsAppearWithTheirPicture) {
  const HWND top = Make("Map of a run", WS_POPUP | WS_THICKFRAME, {10, 20, 210, 120}, nullptr);
  Child("child", top, {50, 60, 150, 90});
  EXPECT_EQ(SdlWindow(top), nullptr);
  ShowWindow(top, SW_SHOW);
  Run();
  SDL_Window* shown = SdlWindow(top);
  ASSERT_NE(shown, nullptr);
  EXPECT_NE(SDL_GetWindowFlags(shown) & SDL_WINDOW_RESIZABLE, 0u);
  const HDC hdc = GetDC(top);
  const HBRUSH brush = CreateSolidBrush(RGB(200, 100, 50));
  const RECT part{3, 4, 30, 40};
  FillRect(hdc, &part, brush);
  DeleteObject(brush);
  ReleaseDC(top, hdc);
  Run();
  const SDL_Surface* surface = SDL_GetWindowSurface(shown);
  ASSERT_EQ(surface->w, 200);
  ASSERT_EQ(surface->h, 100);
  const auto pixel = [surface](int x, int y) {
    const auto* row = static_cast<const Uint8*>(surface->pixels) + y * surface->pitch;
    Uint8 red, green, blue;
    SDL_GetRGB(reinterpret_cast<const Uint32*>(row)[x], surface->format, &red, &green, &blue);
    return RGB(red, green, blue);
  };
  ASSERT_EQ(surface->format->BytesPerPixel, 4);
  EXPECT_EQ(pixel(3, 4), RGB(200, 100, 50));
  EXPECT_EQ(pixel(2, 4), GetSysColor(COLOR_WINDOW));
  SetWindowTextA(top, "Another title");
  SetWindowPos(top, nullptr, 0, 0, 300, 150, SWP_NOMOVE | SWP_NOZORDER);
  Run();
  ASSERT_EQ(SdlWindow(top), shown);
  int width = 0;
  SDL_GetWindowSize(shown, &width, nullptr);
  EXPECT_EQ(width, 300);
  ShowWindow(top, SW_HIDE);
  EXPECT_EQ(SdlWindow(top), nullptr);
}

SDL_Event Mouse(Uint32 type, Uint32 window, int x, int y) {
  SDL_Event event{};
  event.type = type;
  if (type == SDL_MOUSEMOTION) {
    event.motion.windowID = window;
    event.motion.x = x;
    event.motion.y = y;
  } else {
    event.button.windowID = window;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.x = x;
    event.button.y = y;
  }
  return event;
}

TEST_F(OnDesktop, EventsBecomeMessages) {
  const HWND top = Top("events");
  Run();
  const Uint32 id = SDL_GetWindowID(SdlWindow(top));
  Got();
  LPARAM at = 0;
  probe::Answer() = [&](HWND, UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
    if (message == WM_LBUTTONDOWN) at = lParam;
    return std::nullopt;
  };
  Push(Mouse(SDL_MOUSEMOTION, id, 5, 6));
  Push(Mouse(SDL_MOUSEBUTTONDOWN, id, 7, 8));
  Push(Mouse(SDL_MOUSEBUTTONUP, id, 7, 8));
  SDL_Event key{};
  key.type = SDL_KEYDOWN;
  key.key.keysym.sym = SDLK_ESCAPE;  // without a window: the active one
  Push(key);
  SDL_Event window{};
  window.type = SDL_WINDOWEVENT;
  window.window.windowID = id;
  window.window.event = SDL_WINDOWEVENT_LEAVE;
  Push(window);
  Run();
  EXPECT_EQ(Got("mouse down up key leave"),
            "events:mouse events:down events:up events:key events:leave");
  EXPECT_EQ(at, MAKELPARAM(7, 8));
  SDL_SetWindowSize(SdlWindow(top), 240, 170);
  Run();
  RECT client;
  GetClientRect(top, &client);
  EXPECT_EQ(client.bottom, 170);
  window.window.event = SDL_WINDOWEVENT_CLOSE;
  Push(window);
  Run();
  EXPECT_FALSE(IsWindow(top));
  EXPECT_FALSE(ui::RunUntil([] { return false; }));  // nothing is left to wait for
}

// The driver without a screen has no cursors to show: what is seen is whether one is.
TEST_F(OnDesktop, CursorsAreShownAndHidden) {
  const HCURSOR own = ui::CreateCursor({ui::ImageFromRows({"##", "#o"}, {1, 1})});
  for (const HCURSOR cursor : {own, LoadCursorA(nullptr, IDC_SIZEWE), own}) {
    SetCursor(nullptr);
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);
    SetCursor(cursor);
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE);
  }
}

TEST(DesktopKeys, AreTheOnesDialogsAskFor) {
  struct Case {
    int symbol;
    WORD key;
  };
  for (const Case& c : {Case{SDLK_RETURN, VK_RETURN},
                        {SDLK_KP_ENTER, VK_RETURN},
                        {SDLK_TAB, VK_TAB},
                        {SDLK_LEFT, VK_LEFT},
                        {SDLK_z, 'Z'},
                        {SDLK_9, '9'},
                        {SDLK_F5, 0}}) {
    EXPECT_EQ(ui::KeyOfSymbol(c.symbol), c.key);
  }
}

TEST(DesktopOpen, SaysWhyThereIsNone) {
  setenv("SDL_VIDEODRIVER", "no such driver", 1);
  std::string error;
  EXPECT_EQ(ui::Desktop::Open(error), nullptr);
  EXPECT_NE(error.find("no such driver"), std::string::npos) << error;
}

}  // namespace
