// Messages and commands of the map window.
#include "tests/chrom2d/map_fixture.h"

namespace {

class MapMessages : public Maps {};

TEST_F(MapMessages, OneRebuildAfterTheLastOfTwoSizeChanges) {
  MapWindow& map = Open();
  SetWindowPos(window, nullptr, 40, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  desk.RunFor(1000);
  EXPECT_EQ(map.builds, 1);  // opening and moving change no size
  ASSERT_NE(map.picture, nullptr);
  const int width = map.picture->Width();
  desk.Resize(window, 800, 500);
  EXPECT_EQ(map.mapRect.right - map.mapRect.left, width - 100);  // painted at the new extent,
  EXPECT_EQ(map.picture->Width(), width);                        // the old picture stretched
  desk.RunFor(150);
  desk.Resize(window, 700, 450);
  desk.RunFor(199);
  EXPECT_EQ(map.builds, 1);
  EXPECT_EQ(map.picture->Width(), width);
  desk.RunFor(1);
  EXPECT_EQ(map.builds, 2);
  EXPECT_EQ(map.picture->Width(), width - 200);
  EXPECT_FALSE(KillTimer(window, TChrom2DBase::kResizeTimer));  // it does not go on
  desk.RunFor(1000);
  EXPECT_EQ(map.builds, 2);
}

TEST_F(MapMessages, AnEditControlsChangeRepaintsTheSamePicture) {
  MapWindow& map = Open();
  const int images = map.images;
  for (const int notification : {EN_CHANGE, EN_CHANGE + 1}) {  // the other one does nothing
    SendMessageA(window, WM_COMMAND, MAKEWPARAM(4711, notification), 0);
    desk.RunUntilIdle();
    EXPECT_EQ(map.images, images + 1);
  }
  EXPECT_EQ(map.builds, 1);
}

// The button opens the dialog over the blocked map; only OK makes the picture anew.
TEST_F(MapMessages, ColorDialogsRebuildWhenTheyCloseWithOk) {
  for (const int button : {IDOK, IDCANCEL, 0}) {  // 0: the map is closed instead
    MapWindow& map = Open();
    map._AddRef();  // to be asked after its window is gone
    desk.Click(GetDlgItem(window, TChrom2DBase::kColorCommand));
    ASSERT_EQ(ui::TopLevelWindows().size(), 2U);
    const HWND dialog =
        ui::TopLevelWindows()[0] == window ? ui::TopLevelWindows()[1] : ui::TopLevelWindows()[0];
    EXPECT_FALSE(IsWindowEnabled(window));
    if (button != 0) desk.Click(GetDlgItem(dialog, button));
    if (button == 0) DestroyWindow(window);
    desk.RunUntilIdle();
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_EQ(map.builds, button == IDOK ? 2 : 1) << button;
    DestroyWindow(window);
    map._Release();
    run.reset();
  }
}

TEST_F(MapMessages, MapsMayEndBeforeTheirColorDialogs) {
  run = MakeSpectralRun({});
  auto* const map = new MapWindow(run.get());  // without a window: nobody owns the dialog
  map->EvCommand(TChrom2DBase::kColorCommand, nullptr, BN_CLICKED);
  ASSERT_EQ(ui::TopLevelWindows().size(), 1U);
  const HWND dialog = ui::TopLevelWindows()[0];
  delete map;
  desk.Click(GetDlgItem(dialog, IDOK));
  EXPECT_FALSE(IsWindow(dialog));
}

}  // namespace
