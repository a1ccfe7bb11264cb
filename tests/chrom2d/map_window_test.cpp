// Messages and commands of the map window.
#include "tests/chrom2d/map_fixture.h"

namespace {

class MapMessages : public Maps {};

TEST_F(MapMessages, OneRebuildAfterTheLastOfTwoSizeChanges) {
  MapWindow& map = Open();
  desk.RunFor(1000);
  const int builds = map.builds;
  EXPECT_EQ(builds, 1);  // opening changes no size
  ASSERT_NE(map.picture, nullptr);
  const int width = map.picture->Width();
  desk.Resize(window, 800, 500);
  EXPECT_EQ(map.mapRect.right - map.mapRect.left, width - 100);  // painted at the new extent,
  EXPECT_EQ(map.picture->Width(), width);                        // the old picture stretched
  desk.RunFor(150);
  desk.Resize(window, 700, 450);
  desk.RunFor(199);
  EXPECT_EQ(map.builds, builds);
  EXPECT_EQ(map.picture->Width(), width);
  EXPECT_TRUE(map.resizePending);
  desk.RunFor(1);
  EXPECT_EQ(map.builds, builds + 1);
  EXPECT_EQ(map.picture->Width(), width - 200);
  EXPECT_FALSE(map.resizePending);
  EXPECT_FALSE(KillTimer(window, TChrom2DBase::kResizeTimer));  // it does not go on
  desk.RunFor(1000);
  EXPECT_EQ(map.builds, builds + 1);
}

TEST_F(MapMessages, MovesAndStrayTimersChangeNothing) {
  MapWindow& map = Open();
  desk.RunFor(1000);
  const int builds = map.builds, images = map.images;
  SetWindowPos(window, nullptr, 40, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  EXPECT_FALSE(map.resizePending);
  EXPECT_EQ(SendMessageA(window, WM_TIMER, TChrom2DBase::kResizeTimer, 0), 0);
  desk.RunFor(1000);
  EXPECT_EQ(map.builds, builds);
  EXPECT_EQ(map.images, images);
  // A change of the frame counts as one of the size.
  SetWindowPos(window, nullptr, 0, 0, 0, 0,
               SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_FRAMECHANGED);
  EXPECT_TRUE(map.resizePending);
  desk.RunFor(200);
  EXPECT_EQ(map.builds, builds + 1);
}

TEST_F(MapMessages, ErasingIsLeftToThePicture) {
  Open();
  EXPECT_EQ(SendMessageA(window, WM_ERASEBKGND, 0, 0), 1);
}

TEST_F(MapMessages, AnEditControlsChangeRepaintsTheSamePicture) {
  MapWindow& map = Open();
  desk.RunFor(1000);
  const int builds = map.builds, images = map.images;
  SendMessageA(window, WM_COMMAND, MAKEWPARAM(4711, EN_CHANGE), 0);
  desk.RunUntilIdle();
  EXPECT_EQ(map.images, images + 1);
  EXPECT_EQ(map.builds, builds);
  // Another notification does nothing.
  SendMessageA(window, WM_COMMAND, MAKEWPARAM(4711, EN_CHANGE + 1), 0);
  desk.RunUntilIdle();
  EXPECT_EQ(map.images, images + 1);
}

// The strip with the button stays free; the rest is the map's.
TEST_F(MapMessages, ThePictureLiesBelowTheButton) {
  MapWindow& map = Open();
  RECT button;
  GetWindowRect(GetDlgItem(window, TChrom2DBase::kColorCommand), &button);
  POINT corner{button.left, button.bottom};
  ScreenToClient(window, &corner);
  EXPECT_GT(map.mapRect.top, corner.y);
  const gfx::Surface shown = desk.Picture(window);
  EXPECT_EQ(shown.Pixel(2, corner.y), GetSysColor(COLOR_3DFACE));
  EXPECT_EQ(shown.Pixel(2, map.mapRect.top), MapWindow::bk_col);
}

TEST_F(MapMessages, SharedColorsTakeEffectAtTheNextPaint) {
  MapWindow& map = Open();
  const COLORREF background = MapWindow::bk_col, axes = MapWindow::axis_col;
  MapWindow::bk_col = RGB(1, 2, 3);
  MapWindow::axis_col = RGB(250, 0, 250);
  map.InvalidateAll(nullptr);
  const gfx::Surface shown = desk.Picture(window);
  MapWindow::bk_col = background;
  MapWindow::axis_col = axes;
  EXPECT_EQ(shown.Pixel(2, map.mapRect.top), RGB(1, 2, 3));
  EXPECT_EQ(shown.Pixel(map.mapRect.left - 1, map.mapRect.top + 5), RGB(250, 0, 250));
  EXPECT_EQ(map.builds, 1);
}

struct ColorDialogCase {
  const char* name;
  int button;  // 0: the map is closed instead
  int builds;
};

class ColorDialogs : public MapMessages, public testing::WithParamInterface<ColorDialogCase> {};

// The button opens the dialog over the blocked map; only OK makes the picture anew.
TEST_P(ColorDialogs, RebuildWhenTheyCloseWithOk) {
  MapWindow& map = Open();
  desk.RunFor(1000);
  map._AddRef();  // to be asked after its window is gone
  const int builds = map.builds;
  desk.Click(GetDlgItem(window, TChrom2DBase::kColorCommand));
  ASSERT_EQ(ui::TopLevelWindows().size(), 2U);
  const HWND dialog =
      ui::TopLevelWindows()[0] == window ? ui::TopLevelWindows()[1] : ui::TopLevelWindows()[0];
  EXPECT_FALSE(IsWindowEnabled(window));
  desk.Click(GetDlgItem(dialog, 666));  // logarithmic
  EXPECT_EQ(TheColorScale().formula, ScaleFormula::LOG);
  EXPECT_EQ(map.builds, builds);
  if (GetParam().button != 0) {
    desk.Click(GetDlgItem(dialog, GetParam().button));
  } else {
    DestroyWindow(window);
    desk.RunUntilIdle();
  }
  EXPECT_FALSE(IsWindow(dialog));
  EXPECT_EQ(map.builds, builds + GetParam().builds);
  map._Release();
}

INSTANTIATE_TEST_SUITE_P(Results, ColorDialogs,
                         testing::Values(ColorDialogCase{"Ok", IDOK, 1},
                                         ColorDialogCase{"Cancel", IDCANCEL, 0},
                                         ColorDialogCase{"MapGone", 0, 0}),
                         probe::CaseName());

}  // namespace
