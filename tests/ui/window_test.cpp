// Making and ending windows, places, stale handles, message order.
#include "tests/support/probe.h"

namespace {

class Windows : public probe::Fixture {};

TEST_F(Windows, OwnedWindowsEndFirstAndChildrenBeforeTheirParentIsGone) {
  const HWND top = Top("top");
  const HWND child = Child("child", top, {0, 0, 50, 50});
  Child("grandchild", child, {0, 0, 10, 10});
  Make("owned", WS_POPUP, {0, 0, 5, 5}, top);
  Got();
  EXPECT_TRUE(DestroyWindow(top));
  EXPECT_EQ(Got("destroy gone"),
            "owned:destroy owned:gone top:destroy child:destroy grandchild:destroy "
            "grandchild:gone child:gone top:gone");
  EXPECT_EQ(ui::LiveWindows(), 0u);
}

TEST_F(Windows, WindowsThatRefuseToBeMadeLeaveNothing) {
  for (const UINT refused : {WM_NCCREATE, WM_CREATE}) {
    probe::Answer() = [refused](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
      if (message != refused) return std::nullopt;
      return refused == WM_CREATE ? -1 : 0;
    };
    EXPECT_EQ(Top("never"), nullptr);
    EXPECT_EQ(ui::LiveWindows(), 0u);
  }
}

TEST_F(Windows, ForeignHandlesAreRefused) {
  const HWND stale = Top("stale");
  DestroyWindow(stale);
  const HBRUSH brush = CreateSolidBrush(0);
  for (const HWND bad : {stale, static_cast<HWND>(nullptr), reinterpret_cast<HWND>(~UINT_PTR{0}),
                         reinterpret_cast<HWND>(brush)}) {
    RECT rect{1, 2, 3, 4};
    PAINTSTRUCT paint;
    EXPECT_FALSE(IsWindow(bad) || DestroyWindow(bad) || ShowWindow(bad, SW_SHOW) ||
                 EnableWindow(bad, FALSE) || SetWindowPos(bad, nullptr, 0, 0, 9, 9, 0) ||
                 GetClientRect(bad, &rect) || PostMessageA(bad, WM_APP, 0, 0) ||
                 SendMessageA(bad, WM_APP, 1, 2) || InvalidateRect(bad, nullptr, TRUE) ||
                 BeginPaint(bad, &paint) || UpdateWindow(bad) || EndDialog(bad, 1) ||
                 GetDlgItem(bad, 1) || SetCapture(bad) || ui::RunDialog(bad, nullptr, true));
    ui::FeedMouseMove(bad, {1, 1});
    ui::FeedKey(bad, VK_RETURN, true);
    ui::FeedResize(bad, {10, 10});
    ui::FeedClose(bad);
  }
  DeleteObject(brush);
  EXPECT_TRUE(desk.RunUntilIdle());
}

struct PlaceCase {
  const char* name;
  int x, y, width, height;
  UINT flags;
  const char* got;  // messages
  UINT reported;    // of SWP_NOSIZE and SWP_NOMOVE; ~0: no report
};

class Places : public Windows, public testing::WithParamInterface<PlaceCase> {};

TEST_P(Places, ReportsWhatReallyChanged) {
  const PlaceCase& c = GetParam();
  const HWND top = Top("top", 200, 100);
  UINT reported = ~0u;
  probe::Answer() = [&](HWND, UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
    if (message == WM_WINDOWPOSCHANGED) {
      reported = reinterpret_cast<const WINDOWPOS*>(lParam)->flags & (SWP_NOSIZE | SWP_NOMOVE);
    }
    return std::nullopt;
  };
  Got();
  EXPECT_TRUE(SetWindowPos(top, nullptr, c.x, c.y, c.width, c.height, c.flags | SWP_NOACTIVATE));
  EXPECT_EQ(Got("size move"), c.got);
  EXPECT_EQ(reported, c.reported);
}

const PlaceCase kAllPlaces[] = {
    {"Both", 5, 6, 70, 80, 0, "top:move top:size", 0},
    {"MoveOnly", 5, 6, 70, 80, SWP_NOSIZE, "top:move", SWP_NOSIZE},
    {"FrameAlone", 0, 0, 200, 100, SWP_FRAMECHANGED, "", SWP_NOSIZE | SWP_NOMOVE},
    {"NegativeExtentBecomesEmpty", 0, 0, -5, 100, 0, "top:size", SWP_NOMOVE}};
INSTANTIATE_TEST_SUITE_P(All, Places, testing::ValuesIn(kAllPlaces), CaseName());

TEST_F(Windows, PlacesCountFromTheParentAndAreLimited) {
  const HWND top = Top("top");
  const HWND child = Child("child", top, {10, 20, 60, 70});
  SetWindowPos(top, nullptr, 100, 200, 0, 0, SWP_NOSIZE);
  RECT rect;
  GetWindowRect(child, &rect);
  EXPECT_EQ(rect.left, 110);
  EXPECT_EQ(rect.bottom, 270);
  SetWindowPos(child, nullptr, INT32_MAX, INT32_MIN, INT32_MAX, INT32_MAX, 0);
  GetClientRect(child, &rect);
  EXPECT_EQ(rect.right, 16384);
}

TEST_F(Windows, PostedMessagesComeInOrderAndDieWithTheirWindow) {
  const HWND a = Top("a"), b = Top("b");
  std::string order;
  probe::Answer() = [&](HWND window, UINT message, WPARAM wParam,
                        LPARAM) -> std::optional<LRESULT> {
    if (message != WM_APP) return std::nullopt;
    order += std::to_string(wParam);
    if (wParam == 1) {
      PostMessageA(window, WM_APP, 4, 0);
      DestroyWindow(b);
    }
    if (wParam == 3) SendMessageA(window, WM_APP, 9, 0);
    return 0;
  };
  PostMessageA(a, WM_APP, 1, 0);
  PostMessageA(b, WM_APP, 2, 0);
  PostMessageA(a, WM_APP, 3, 0);
  EXPECT_TRUE(desk.RunUntilIdle());
  EXPECT_EQ(order, "1394");
}

TEST_F(Windows, LoopsEndWhenAskedOrWhenNothingMoreCanCome) {
  const HWND top = Top("top");
  bool done = false;
  EXPECT_FALSE(ui::RunUntil([&] { return done; }));
  desk.Then([&] { done = true; });
  EXPECT_TRUE(ui::RunUntil([&] { return done; }));
  SetTimer(top, 1, 10, [](HWND, UINT, UINT_PTR, DWORD) { PostQuitMessage(7); });
  EXPECT_FALSE(ui::RunUntil([] { return false; }));
  int code = 0;
  EXPECT_TRUE(ui::QuitPosted(&code));
  EXPECT_EQ(code, 7);
  ui::ResetQuit();
}

}  // namespace
