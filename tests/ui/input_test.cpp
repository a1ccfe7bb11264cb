// Mouse, capture, cursors, keys, focus.
#include "tests/support/probe.h"

namespace {

class Mouse : public probe::Fixture {
 protected:
  HWND top = Top("top", 200, 100);
  HWND a = Child("a", top, {10, 10, 60, 60});
  HWND b = Child("b", top, {50, 10, 90, 60});  // lies above a
};

TEST_F(Mouse, GoesToTheInnermostShownWindow) {
  Got();
  desk.MoveTo(top, 5, 5);
  desk.MoveTo(top, 20, 20);
  desk.MoveTo(top, 55, 20);
  ShowWindow(b, SW_HIDE);
  desk.MoveTo(top, 55, 20);
  EXPECT_EQ(Got("mouse leave"), "top:mouse top:leave a:mouse a:leave b:mouse b:leave a:mouse");
  ui::FeedMouseLeave(top);
  desk.RunUntilIdle();
  EXPECT_EQ(Got("mouse leave"), "a:leave");
}

TEST_F(Mouse, TheCaptureTakesAllWithPositionsOfItsOwn) {
  std::vector<POINT> positions;
  WPARAM keys = 0;
  int cursorsAsked = 0;
  probe::Answer() = [&](HWND, UINT message, WPARAM wParam,
                        LPARAM lParam) -> std::optional<LRESULT> {
    if (message == WM_MOUSEMOVE) {
      positions.push_back({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      keys = wParam;
    }
    cursorsAsked += message == WM_SETCURSOR ? 1 : 0;
    return std::nullopt;
  };
  desk.Press(a, 1, 1);
  positions.clear();
  EXPECT_EQ(SetCapture(a), nullptr);
  cursorsAsked = 0;
  Got();
  desk.MoveTo(top, 3, 200);
  ui::FeedMouseMove(top, {100000, -100000});
  desk.RunUntilIdle();
  ASSERT_EQ(positions.size(), 2u);
  EXPECT_EQ(positions[0].x, -7);
  EXPECT_EQ(positions[0].y, 190);
  EXPECT_EQ(positions[1].x, 32767);
  EXPECT_EQ(positions[1].y, -32768);
  EXPECT_EQ(keys, MK_LBUTTON);
  EXPECT_EQ(cursorsAsked, 0);
  EXPECT_EQ(SetCapture(b), a);
  EXPECT_EQ(Got("mouse uncapt"), "a:mouse a:mouse a:uncapt");
  DestroyWindow(b);
  EXPECT_EQ(GetCapture(), nullptr);
  desk.Release(top, 3, 3);
  EXPECT_EQ(Got("up"), "top:up");
}

TEST_F(Mouse, KeysGoToTheFocusAndActivationBringsItBack) {
  SetFocus(b);
  Got();
  desk.Key('A');
  EXPECT_EQ(Got("key"), "b:key");
  const HWND other = Top("other");
  EXPECT_EQ(GetActiveWindow(), other);
  EXPECT_EQ(Got("focus unfocus"), "b:unfocus other:focus");
  desk.Key('A');
  EXPECT_EQ(Got("key"), "other:key");
  DestroyWindow(other);
  EXPECT_EQ(GetFocus(), b);
  DestroyWindow(b);
  desk.Key('A');
  EXPECT_EQ(Got("key"), "top:key");
}

}  // namespace
