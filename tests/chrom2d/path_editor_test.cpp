// Editing with the mouse: every gesture, and what becomes of the path.
#include <set>

#include "tests/chrom2d/path_fixture.h"

namespace {

struct EditCase {
  const char* name;
  const char* path;
  std::function<void(PathEditors&)> act;
  const char* edited;
  const char* selected;
};

const char* const kTwo = "3-7 until 20, 5-9";
const char* const kFour = "1-2 until 10, 3-4 until 20, 5-6 until 30, 7-8";

// Both ends in seconds and channels.
auto Drag(double fromSec, int fromChannel, double toSec, int toChannel) {
  return [=](PathEditors& e) { e.DragTo(e.At(fromSec, fromChannel), e.At(toSec, toChannel)); };
}
auto DragAside(double fromSec, double toSec) { return Drag(fromSec, 11, toSec, 11); }
auto RightClickAt(double sec) {
  return [=](PathEditors& e) { e.RightClick(e.At(sec, 11)); };
}
void DragOut(PathEditors& e) { e.DragTo(e.At(20, 11), {e.X(50) + 20, -5}); }
void ClickBoundary(PathEditors& e) { e.desk.Click(e.window, e.X(20) + 3, e.Y(11)); }
void DragBetween(PathEditors& e) { e.DragTo(e.At(25, 7), {e.X(25), e.Y(9) - 10}); }
void RightClickOutside(PathEditors& e) {
  ClickBoundary(e);
  e.RightClick({e.X(0) - 1, e.Y(11)});
  e.RightClick({e.X(25), e.Y(20) - 1});
}
// The boundary that is added under the pressed button is selected, and the drag has ended.
void RightClickWhileDragging(PathEditors& e) {
  e.desk.Press(e.window, e.X(20), e.Y(11));
  e.RightClick(e.At(10, 11));
  e.desk.Release(e.window, e.X(15), e.Y(11));
}

class Edit : public PathEditors, public testing::WithParamInterface<EditCase> {};

TEST_P(Edit, ChangesThePath) {
  const EditCase& c = GetParam();
  OpenPath(c.path);
  c.act(*this);
  EXPECT_EQ(Edited(), c.edited);
  EXPECT_EQ(Selected(), c.selected);
  EXPECT_EQ(GetCapture(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Boundaries, Edit,
    testing::Values(
        EditCase{"OntoTheRightOne", kFour, DragAside(10, 20), "1-2 until 20, 5-6 until 30, 7-8",
                 "0.33 min"},
        EditCase{"OverTwoToTheRight", kFour, DragAside(10, 34), "1-2 until 34, 7-8", "0.57 min"},
        EditCase{"OverTwoToTheLeft", kFour, DragAside(30, 8), "1-2 until 8, 7-8", "0.13 min"},
        EditCase{"ToTheStart", kFour, DragAside(10, 0), "3-4 until 20, 5-6 until 30, 7-8", ""},
        // Another one within the first step goes as well; the dragged one stays selected.
        EditCase{"BesideOneAtTheStart", "1-2 until 0.25, 3-4 until 20, 5-6", DragAside(20, 15),
                 "3-4 until 15, 5-6", "0.25 min"},
        EditCase{"BeyondTheMap", kTwo, DragOut, "3-7 until 50, 5-9", "0.83 min"},
        EditCase{"OnlyClicked", kTwo, ClickBoundary, kTwo, "0.33 min"}),
    probe::CaseName());

INSTANTIATE_TEST_SUITE_P(
    BandLines, Edit,
    testing::Values(EditCase{"LowUp", "3-7", Drag(25, 3, 30, 5), "5-7", "225"},
                    EditCase{"LowAboveHigh", "3-7", Drag(25, 3, 25, 12), "7-12", "260"},
                    EditCase{"HighBelowLow", "1-2 until 10, 3-9", Drag(25, 9, 25, 1),
                             "1-2 until 10, 1-3", "205"},
                    EditCase{"NearestChannel", "3-7", DragBetween, "3-9", "245"},
                    EditCase{"BoundaryGoesFirst", "3-7 until 20, 3-7", Drag(20, 3, 12, 8),
                             "3-7 until 12, 3-7", "0.20 min"}),
    probe::CaseName());

INSTANTIATE_TEST_SUITE_P(RightButton, Edit,
                         testing::Values(EditCase{"SplitsASegment", kTwo, RightClickAt(12.2),
                                                  "3-7 until 12, 3-7 until 20, 5-9", "0.20 min"},
                                         EditCase{"BehindTheLast", "3-7 until 20", RightClickAt(30),
                                                  "3-7 until 20, 7-14 until 30", ""},
                                         EditCase{"OutsideAddsNothingAndDeselects", kTwo,
                                                  RightClickOutside, kTwo, ""},
                                         EditCase{"WhileDragging", kTwo, RightClickWhileDragging,
                                                  "3-7 until 10, 3-7 until 20, 5-9", "0.17 min"}),
                         probe::CaseName());

TEST_F(PathEditors, PathsAreCutToTheRun) {
  struct {
    const char* path;
    const char* shown;
  } const cases[] = {{"", "7-14"},
                     {"1-2 until 10, 3-4 until 50.5, 5-6 until 70, 7-8", "1-2 until 10, 3-4"},
                     {"1-2 until 50, 3-4", "1-2 until 50, 3-4"}};
  run = MakeSpectralRun(spectra);
  for (const auto& c : cases) {
    OpenOnRun(c.path);
    EXPECT_EQ(Edited(), c.shown);
    DestroyWindow(window);
  }
}

TEST_F(PathEditors, BoundariesSnapToTheSampleInterval) {
  struct {
    float interval;
    int samples;
    double click;
    const char* path;
  } const cases[] = {{0.25F, 17, 1.14, "1-2 until 1.25, 1-2"},
                     // Too long for a step; the run's end need not be a multiple.
                     {2.0F, 3, 1.26, "1-2 until 1.3, 1-2"},
                     {1.03F, 4, 3.09, "1-2 until 3.089999914, 1-2"},
                     {0.0F, 101, 0, "1-2"}};
  for (const auto& c : cases) {
    run = MakeSpectralRun(spectra);
    run->sampleInterval = c.interval;
    run->sampleCount = c.samples;
    OpenOnRun("1-2");
    RightClick(At(c.click, 11));
    EXPECT_EQ(Edited(), c.path);
    DestroyWindow(window);
    run.reset();
  }
}

TEST_F(PathEditors, CursorsFollowTheHandles) {
  const HCURSOR before = LoadCursorA(nullptr, IDC_WAIT);
  SetCursor(before);
  OpenPath(kTwo);
  const EditorResources& own = Editor();
  EXPECT_EQ((std::set<HCURSOR>{nullptr, before, own.splitH, own.splitV, own.cross}).size(), 5U);
  struct {
    const char* where;
    POINT at;
    HCURSOR cursor;
  } const cases[] = {
      {"map", {X(10), Y(11)}, own.cross},
      {"boundary", {X(20) - 4, Y(11)}, own.splitH},
      {"left of the boundary", {X(20) - 5, Y(11)}, own.cross},
      {"outside left", {X(0) - 1, Y(11)}, before},
      {"low line", {X(10), Y(3) + 4}, own.splitV},
      {"below the low line", {X(10), Y(3) + 5}, own.cross},
      {"high line", {X(10), Y(7) - 4}, own.splitV},
      {"outside below", {X(10), editor->mapRect.bottom}, before},
  };
  for (const auto& c : cases) {
    // A cursor is that of the move before.
    for (int i = 0; i < 2; ++i) desk.MoveTo(window, c.at.x, c.at.y);
    EXPECT_EQ(GetCursor(), c.cursor) << c.where;
  }
  desk.Press(window, X(20), Y(11));
  EXPECT_EQ(GetCapture(), window);
  desk.Release(window, X(20), Y(11));
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(PathEditors, ButtonsKeepTheirPlaceAtTheBottomRight) {
  OpenPath("3-7");
  const auto fromCorner = [&](int id) {
    RECT button{}, frame{};
    GetWindowRect(GetDlgItem(window, id), &button);
    GetWindowRect(window, &frame);
    return std::pair(frame.right - button.right, frame.bottom - button.bottom);
  };
  const auto ok = fromCorner(IDOK), cancel = fromCorner(IDCANCEL);
  desk.Resize(window, 40, 20);
  desk.Resize(window, 400, 300);
  EXPECT_EQ(fromCorner(IDOK), ok);
  EXPECT_EQ(fromCorner(IDCANCEL), cancel);
  // The strip is below the map and its time labels.
  EXPECT_LE(editor->mapRect.bottom, 300 - 42 - 20);
}

struct CloseCase {
  const char* name;
  std::function<void(PathEditors&)> close;
  bool accepted;
};
class Closed : public PathEditors, public testing::WithParamInterface<CloseCase> {};

TEST_P(Closed, ReplacesThePathOnlyWhenAccepted) {
  SetPath(path, kTwo);
  run = MakeSpectralRun(spectra);
  const HWND parent = Top("parent");
  window = CallChromatogramIntegrationPathEdit(parent, run.get(), path);
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(IsWindowVisible(window));
  EXPECT_FALSE(IsWindowEnabled(parent));
  desk.RunUntilIdle();
  for (const int x : {100, 200, 300, 500}) desk.Click(window, x, 99, ui::MouseButton::kRight);
  EXPECT_EQ(TextOf(path), kTwo);
  GetParam().close(*this);
  EXPECT_TRUE(IsWindowEnabled(parent));
  EXPECT_EQ(path.count, GetParam().accepted ? 6 : 2);
}

void PressAndClose(PathEditors& e) {
  e.desk.Press(e.window, 300, 99);
  e.desk.Close(e.window);
}

INSTANTIATE_TEST_SUITE_P(
    All, Closed,
    testing::Values(
        CloseCase{"Ok", [](auto& e) { e.desk.Click(GetDlgItem(e.window, IDOK)); }, true},
        CloseCase{"Cancel", [](auto& e) { e.desk.Click(GetDlgItem(e.window, IDCANCEL)); }, false},
        CloseCase{"ClosedWhileDragging", PressAndClose, false}),
    probe::CaseName());

TEST_F(PathEditors, ContentThatIsRefusedKeepsThePath) {
  OpenPath("3-7");
  RightClick(At(12, 11));
  editor->agrees = false;
  desk.Click(GetDlgItem(window, IDOK));
  EXPECT_TRUE(IsWindow(window));
  EXPECT_EQ(TextOf(path), "3-7");
}

// No run and one without spectra: the window is there, nothing is added.
TEST_F(PathEditors, RunsWithoutAMapAddNothing) {
  for (const int channels : {0, 2}) {
    SetPath(path, "3-7 until 10, 4-8 until 20, 5-9");
    spectra.channels = channels;
    if (channels > 0) run = MakeSpectralRun(spectra);
    window = CallChromatogramIntegrationPathEdit(nullptr, run.get(), path);
    ASSERT_NE(window, nullptr);
    desk.RunUntilIdle();
    desk.Drag(window, {300, 200}, {500, 300});
    RightClick({300, 200});
    desk.Click(GetDlgItem(window, IDOK));
    EXPECT_EQ(TextOf(path), "3-7 until 10, 4-8 until 20, 5-9");
  }
}

}  // namespace
