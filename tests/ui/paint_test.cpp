// Invalid parts, painting, contexts of windows, pictures.
#include "tests/support/probe.h"

namespace {

class Painting : public probe::Fixture {
 protected:
  // Fills what a window may paint with `color`.
  static void FillAll(HWND window, COLORREF color) {
    const HDC hdc = GetDC(window);
    const HBRUSH brush = CreateSolidBrush(color);
    const RECT huge{-1000, -1000, 5000, 5000};
    FillRect(hdc, &huge, brush);
    DeleteObject(brush);
    EXPECT_EQ(ReleaseDC(window, hdc), 1);
  }
};

TEST_F(Painting, ParentsBeforeChildrenAndOnceOnly) {
  const HWND top = Top("top");
  const HWND child = Child("child", top, {10, 10, 50, 50});
  desk.RunUntilIdle();
  EXPECT_EQ(Got("paint erase"), "top:paint top:erase child:paint child:erase");
  InvalidateRect(child, nullptr, FALSE);
  InvalidateRect(child, nullptr, FALSE);
  desk.RunUntilIdle();
  EXPECT_EQ(Got("paint erase"), "child:paint");
  ShowWindow(child, SW_HIDE);
  InvalidateRect(child, nullptr, TRUE);
  desk.RunUntilIdle();
  EXPECT_EQ(Got("paint erase"), "");
  ShowWindow(child, SW_SHOW);
  desk.RunUntilIdle();
  EXPECT_EQ(Got("paint erase"), "child:paint child:erase");
}

struct InvalidCase {
  const char* name;
  std::vector<RECT> invalid;
  std::vector<RECT> valid;
  RECT painted;  // empty: no WM_PAINT
};

class InvalidParts : public Painting, public testing::WithParamInterface<InvalidCase> {};

TEST_P(InvalidParts, AreKeptAsOneRectangle) {
  const InvalidCase& c = GetParam();
  const HWND top = Top("top", 100, 100);
  desk.RunUntilIdle();
  RECT painted{0, 0, 0, 0};
  probe::Answer() = [&](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
    if (message != WM_PAINT) return std::nullopt;
    PAINTSTRUCT paint;
    const HDC hdc = BeginPaint(window, &paint);
    painted = paint.rcPaint;
    RECT clip;
    GetClipBox(hdc, &clip);
    EXPECT_EQ(clip.left, painted.left);
    EXPECT_EQ(clip.bottom, painted.bottom);
    EndPaint(window, &paint);
    return 0;
  };
  for (const RECT& part : c.invalid) InvalidateRect(top, &part, FALSE);
  for (const RECT& part : c.valid) ValidateRect(top, &part);
  desk.RunUntilIdle();
  EXPECT_EQ(painted.left, c.painted.left);
  EXPECT_EQ(painted.top, c.painted.top);
  EXPECT_EQ(painted.right, c.painted.right);
  EXPECT_EQ(painted.bottom, c.painted.bottom);
}

const InvalidCase kAllInvalidParts[] = {
    {"Union", {{10, 10, 20, 20}, {50, 60, 70, 80}}, {}, {10, 10, 70, 80}},
    {"CutToTheWindow", {{-5, 90, 20, 900}}, {}, {0, 90, 20, 100}},
    {"OutsideIsNothing", {{100, 0, 120, 50}, {30, 30, 20, 20}}, {}, {}},
    {"ValidatedInPart", {{10, 10, 20, 20}}, {{0, 0, 15, 30}}, {10, 10, 20, 20}}};
INSTANTIATE_TEST_SUITE_P(All, InvalidParts, testing::ValuesIn(kAllInvalidParts), CaseName());

// A procedure that never validates must not keep the loop busy for ever.
TEST_F(Painting, AnUnansweredPaintIsNotRepeated) {
  Top("top");
  probe::Answer() = [](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
    return message == WM_PAINT ? std::optional<LRESULT>(0) : std::nullopt;
  };
  EXPECT_TRUE(desk.RunUntilIdle());
  EXPECT_EQ(Got("paint"), "top:paint");
}

TEST_F(Painting, AWindowNeverPaintsOutsideItselfNorOverItsChildren) {
  const HWND top = Top("top", 100, 80);
  const HWND child = Child("child", top, {60, 40, 140, 60});
  desk.RunUntilIdle();
  FillAll(child, RGB(255, 0, 0));
  FillAll(top, RGB(0, 0, 255));
  const gfx::Surface picture = desk.Picture(top);
  for (int y = 0; y < 80; ++y) {
    for (int x = 0; x < 100; ++x) {
      const bool inChild = x >= 60 && y >= 40 && y < 60;
      EXPECT_EQ(picture.Pixel(x, y), inChild ? RGB(255, 0, 0) : RGB(0, 0, 255));
    }
  }
  // What was under the child is still there when the child goes.
  ShowWindow(child, SW_HIDE);
  EXPECT_EQ(desk.Picture(top).Pixel(70, 50), RGB(0, 0, 255));
}

TEST_F(Painting, ContextsStayUsableWhenTheirWindowChangesOrEnds) {
  const HWND top = Top("top", 50, 50);
  const HDC early = GetDC(top);
  EXPECT_EQ(WindowFromDC(early), top);
  SetWindowPos(top, nullptr, 0, 0, 400, 400, 0);
  EXPECT_TRUE(Rectangle(early, 0, 0, 400, 400));
  const HDC late = GetDC(top);
  DestroyWindow(top);
  EXPECT_TRUE(Rectangle(late, 0, 0, 400, 400));
  EXPECT_EQ(WindowFromDC(late), nullptr);
  EXPECT_EQ(ReleaseDC(nullptr, late), 0);
  EXPECT_EQ(ReleaseDC(top, late), 1);
  EXPECT_EQ(ReleaseDC(top, early), 1);
  EXPECT_EQ(ReleaseDC(top, early), 0);
}

TEST_F(Painting, ShowsOnlyWhatHasChanged) {
  const HWND top = Top("top");
  desk.RunUntilIdle();
  EXPECT_EQ(desk.Presented(top), 1);
  desk.RunUntilIdle();
  EXPECT_EQ(desk.Presented(top), 1);
  const RECT part{1, 1, 2, 2};
  InvalidateRect(top, &part, FALSE);
  SendMessageA(top, WM_NULL, 0, 0);
  EXPECT_EQ(desk.Presented(top), 1);
  UpdateWindow(top);
  desk.RunUntilIdle();
  EXPECT_EQ(desk.Presented(top), 2);
}

}  // namespace
