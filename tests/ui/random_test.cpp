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

  void Act() {
    const HWND window = Any();
    const RECT rect = AnyRect();
    switch (Pick(28)) {
      default:
        if (ui::LiveWindows() < 30) {
          const DWORD kind = Pick(2) != 0 ? WS_CHILD : WS_POPUP;
          const HWND made = CreateWindowExA(
              0, Pick(3) != 0 ? "probe" : "BUTTON", "x",
              kind | WS_VISIBLE | (Pick(2) != 0 ? BS_AUTORADIOBUTTON : BS_OWNERDRAW), rect.left,
              rect.top, rect.right - rect.left, rect.bottom - rect.top, window, nullptr, nullptr,
              nullptr);
          if (made != nullptr) windows_.push_back(made);
        }
        break;
      case 2:
        DestroyWindow(window);
        break;
      case 3:
        ShowWindow(window, Pick(2) != 0 ? SW_SHOW : SW_HIDE);
        break;
      case 4:
        EnableWindow(window, Pick(3) != 0);
        break;
      case 5:
        SetWindowPos(window, nullptr, rect.left, rect.top, rect.right, rect.bottom,
                     static_cast<UINT>(Pick(0x400)));
        break;
      case 6:
        InvalidateRect(window, Pick(2) != 0 ? &rect : nullptr, Pick(2));
        break;
      case 7:
        SetCapture(window);
        break;
      case 8:
        ReleaseCapture();
        break;
      case 9:
        SetFocus(window);
        break;
      case 10:
        if (window != nullptr) SetTimer(window, static_cast<UINT_PTR>(Pick(3)), 10, nullptr);
        break;
      case 11:
        PostMessageA(window, WM_APP, 0, 0);
        break;
      case 12:
        UpdateWindow(window);
        break;
      case 13:
        ui::FeedMouseMove(window, {rect.left, rect.top});
        break;
      case 14:
        ui::FeedMouseButton(window, ui::MouseButton::kLeft, Pick(2) != 0, {rect.left, rect.top});
        break;
      case 15:
        ui::FeedKey(window, static_cast<WORD>(Pick(64)), Pick(2) != 0);
        break;
      case 16:
        ui::FeedClose(window);
        break;
      case 17:
        ui::FeedResize(window, {rect.right, rect.bottom});
        break;
      case 18:
        ui::FeedActivate(window, Pick(2) != 0);
        break;
    }
  }

  void CheckConsistent() {
    const HWND capture = GetCapture(), focus = GetFocus(), active = GetActiveWindow();
    EXPECT_TRUE(capture == nullptr || IsWindow(capture));
    EXPECT_TRUE(active == nullptr || IsWindow(active));
    EXPECT_TRUE(focus == nullptr || focus == active || IsChild(active, focus));
  }

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
