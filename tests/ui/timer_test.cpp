// Timers on the clock that the test moves.
#include "tests/support/probe.h"

namespace {

class Timers : public probe::Fixture {
 protected:
  // Times at which timers fired, as "id@ms".
  std::string Fired() { return std::exchange(fired_, ""); }
  HWND MakeWindow() {
    const HWND top = Top("top");
    probe::Answer() = [this](HWND, UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
      if (message != WM_TIMER) return std::nullopt;
      fired_ += (fired_.empty() ? "" : " ") + std::to_string(wParam) + "@" +
                std::to_string(GetTickCount());
      if (onTimer) onTimer(wParam);
      return 0;
    };
    return top;
  }
  std::function<void(WPARAM)> onTimer;

 private:
  std::string fired_;
};

TEST_F(Timers, FireInTheOrderOfTheirTimes) {
  const HWND top = MakeWindow();
  SetTimer(top, 1, 100, nullptr);
  SetTimer(top, 2, 40, nullptr);
  desk.RunFor(120);
  EXPECT_EQ(Fired(), "2@40 2@80 1@100 2@120");
  EXPECT_TRUE(KillTimer(top, 2));
  EXPECT_FALSE(KillTimer(top, 2));
  desk.RunFor(100);
  EXPECT_EQ(Fired(), "1@200");
}

TEST_F(Timers, SettingAgainStartsAnew) {
  const HWND top = MakeWindow();
  onTimer = [&](WPARAM id) { KillTimer(top, id); };
  SetTimer(top, 777, 200, nullptr);
  desk.RunFor(150);
  SetTimer(top, 777, 200, nullptr);
  desk.RunFor(199);
  EXPECT_EQ(Fired(), "");
  desk.RunFor(1000);
  EXPECT_EQ(Fired(), "777@350");
}

TEST_F(Timers, MissedTicksAreNotMadeUpForAndPeriodsAreNotShorterThan10Ms) {
  const HWND top = MakeWindow();
  SetTimer(top, 1, 0, nullptr);
  // Nothing runs while the clock moves on by 95 ms.
  desk.Wait(95);
  EXPECT_TRUE(ui::Step() && ui::Step());
  desk.RunUntilIdle();
  EXPECT_EQ(Fired(), "1@95");
  desk.RunFor(25);
  EXPECT_EQ(Fired(), "1@105 1@115");
}

TEST_F(Timers, CallbacksWithoutAWindow) {
  static std::vector<DWORD> times;
  times.clear();
  const UINT_PTR id = SetTimer(nullptr, 0, 30, [](HWND, UINT, UINT_PTR timer, DWORD time) {
    times.push_back(time);
    if (times.size() == 2) KillTimer(nullptr, timer);
  });
  EXPECT_NE(id, 0u);
  desk.RunFor(300);
  EXPECT_EQ(times, (std::vector<DWORD>{30, 60}));
}

}  // namespace
