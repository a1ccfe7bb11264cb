// Seeded random programs: whatever windows do to each other in the middle of messages, nothing
// crashes, hangs or leaks, and what the layer says about its windows stays consistent.
#include <random>

#include "tests/support/probe.h"

namespace {

class RandomPrograms : public probe::Fixture {
 protected:
  int Pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  // Mostly a window that lives.
  HWND Any() {
    HWND any = nullptr;
    for (int tries = Pick(8); tries >= 0 && !windows_.empty() && !IsWindow(any); --tries) {
      any = windows_[static_cast<std::size_t>(Pick(static_cast<int>(windows_.size())))];
    }
    return any;
  }
  RECT AnyRect() {
    const int x = Pick(120) - 20, y = Pick(120) - 20;
    return {x, y, x + Pick(100), y + Pick(100)};
  }

  void Make(HWND parent, RECT at) {
    if (ui::LiveWindows() >= 30) return;
    const DWORD kind = Pick(2) != 0 ? WS_CHILD : WS_POPUP;
    const DWORD button = Pick(2) != 0 ? BS_AUTORADIOBUTTON : BS_OWNERDRAW;
    const HWND made = CreateWindowExA(
        0, Pick(3) != 0 ? "probe" : "BUTTON", "x", kind | WS_VISIBLE | button, at.left, at.top,
        at.right - at.left, at.bottom - at.top, parent, nullptr, nullptr, nullptr);
    if (made != nullptr) windows_.push_back(made);
  }
  // One call in three makes a window.
  void Act() {
    const HWND window = Any();
    const RECT rect = AnyRect();
    const auto action = static_cast<std::size_t>(Pick(static_cast<int>(actions_.size() * 3 / 2)));
    action < actions_.size() ? actions_[action](window, rect) : Make(window, rect);
  }

  void CheckConsistent() {
    const HWND capture = GetCapture(), focus = GetFocus(), active = GetActiveWindow();
    EXPECT_TRUE(capture == nullptr || IsWindow(capture));
    EXPECT_TRUE(active == nullptr || IsWindow(active));
    EXPECT_TRUE(focus == nullptr || focus == active || IsChild(active, focus));
  }

  const std::vector<std::function<void(HWND, RECT)>> actions_ = {
      [](HWND w, RECT) { DestroyWindow(w); },
      [this](HWND w, RECT) { ShowWindow(w, Pick(2) != 0 ? SW_SHOW : SW_HIDE); },
      [this](HWND w, RECT) { EnableWindow(w, Pick(3) != 0); },
      [this](HWND w, RECT r) {
        const auto flags = static_cast<UINT>(Pick(0x400));
        SetWindowPos(w, nullptr, r.left, r.top, r.right, r.bottom, flags);
      },
      [this](HWND w, RECT r) { InvalidateRect(w, Pick(2) != 0 ? &r : nullptr, Pick(2)); },
      [](HWND w, RECT) { SetCapture(w); },
      [](HWND, RECT) { ReleaseCapture(); },
      [](HWND w, RECT) { SetFocus(w); },
      [this](HWND w, RECT) {
        if (w != nullptr) SetTimer(w, static_cast<UINT_PTR>(Pick(3)), 10, nullptr);
      },
      [](HWND w, RECT) { PostMessageA(w, WM_APP, 0, 0); },
      [](HWND w, RECT) { UpdateWindow(w); },
      [](HWND w, RECT r) {
        ui::FeedMouseMove(w, {r.left, r.top});
      },
      [this](HWND w, RECT r) {
        ui::FeedMouseButton(w, ui::MouseButton::kLeft, Pick(2) != 0, {r.left, r.top});
      },
      [this](HWND w, RECT) { ui::FeedKey(w, static_cast<WORD>(Pick(64)), Pick(2) != 0); },
      [](HWND w, RECT) { ui::FeedClose(w); },
      [](HWND w, RECT r) {
        ui::FeedResize(w, {r.right, r.bottom});
      },
      [this](HWND w, RECT) { ui::FeedActivate(w, Pick(2) != 0); },
  };
  std::mt19937 random_;
  std::vector<HWND> windows_;
};

TEST_F(RandomPrograms, NeitherCrashNorHangNorLeak) {
  for (unsigned seed = 1; seed <= 150; ++seed) {
    random_.seed(seed);
    windows_.clear();
    int budget = 400;  // actions inside of messages
    probe::Answer() = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
      if (budget > 0 && Pick(4) == 0) {
        --budget;
        Act();
      }
      return std::nullopt;
    };
    for (int i = 0; i < 60; ++i) {
      Act();
      EXPECT_TRUE(desk.RunUntilIdle()) << seed;
      CheckConsistent();
    }
    budget = 0;
    for (HWND top : ui::TopLevelWindows()) DestroyWindow(top);
    EXPECT_EQ(ui::LiveWindows(), 0u) << seed;
    EXPECT_TRUE(GetCapture() == nullptr && GetFocus() == nullptr && GetActiveWindow() == nullptr);
    probe::Answer() = nullptr;
    if (HasFailure()) break;
  }
}

}  // namespace
