// Editing with the mouse: every gesture, and what becomes of the path.
#include "tests/chrom2d/path_fixture.h"

namespace {

struct EditCase {
  const char* name;
  const char* path;
  std::function<void(PathEditors&)> act;
  const char* edited;
  const char* selected;
};

const char* const kFour = "1-2 until 10, 3-4 until 20, 5-6 until 30, 7-8";

// Both ends in seconds and channels.
auto Drag(double fromSec, int fromChannel, double toSec, int toChannel) {
  return [=](PathEditors& e) { e.DragTo(e.At(fromSec, fromChannel), e.At(toSec, toChannel)); };
}
auto DragAside(double fromSec, double toSec) { return Drag(fromSec, 11, toSec, 11); }
auto RightClickAt(double sec) {
  return [=](PathEditors& e) { e.RightClick(e.At(sec, 11)); };
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
        EditCase{"Left", "3-7 until 20, 5-9", DragAside(20, 12), "3-7 until 12, 5-9", "| 0.20 min"},
        EditCase{"Right", "3-7 until 20, 5-9", DragAside(20, 33), "3-7 until 33, 5-9",
                 "| 0.55 min"},
        EditCase{"NearlyUpToTheRightOne", kFour, DragAside(10, 19.5),
                 "1-2 until 19.5, 3-4 until 20, 5-6 until 30, 7-8", "| 0.33 min"},
        EditCase{"OntoTheRightOne", kFour, DragAside(10, 20), "1-2 until 20, 5-6 until 30, 7-8",
                 "| 0.33 min"},
        EditCase{"OverTwoToTheRight", kFour, DragAside(10, 34), "1-2 until 34, 7-8", "| 0.57 min"},
        EditCase{"NearlyUpToTheLeftOne", kFour, DragAside(30, 20.5),
                 "1-2 until 10, 3-4 until 20, 5-6 until 20.5, 7-8", "| 0.34 min"},
        EditCase{"OntoTheLeftOne", kFour, DragAside(30, 20), "1-2 until 10, 3-4 until 20, 7-8",
                 "| 0.33 min"},
        EditCase{"OverTwoToTheLeft", kFour, DragAside(30, 8), "1-2 until 8, 7-8", "| 0.13 min"},
        EditCase{"ToTheStart", kFour, DragAside(10, 0), "3-4 until 20, 5-6 until 30, 7-8", ""},
        EditCase{"OverOthersToTheStart", kFour, DragAside(30, 0.1), "7-8", ""},
        // Another one within the first step goes as well; the dragged one stays selected.
        EditCase{"BesideOneAtTheStart", "1-2 until 0.25, 3-4 until 20, 5-6", DragAside(20, 15),
                 "3-4 until 15, 5-6", "| 0.25 min"},
        EditCase{"BeyondTheMap", "3-7 until 20, 5-9",
                 [](PathEditors& e) {
                   e.DragTo(e.At(20, 11), {e.X(50) + 20, -5});
                 },
                 "3-7 until 50, 5-9", "| 0.83 min"},
        EditCase{"OnlyClicked", "3-7 until 20, 5-9",
                 [](PathEditors& e) { e.desk.Click(e.window, e.X(20) + 3, e.Y(11)); },
                 "3-7 until 20, 5-9", "| 0.33 min"},
        EditCase{"PressedBesideIt", "3-7 until 20, 5-9",
                 [](PathEditors& e) {
                   e.DragTo({e.X(20) + 5, e.Y(11)}, e.At(30, 11));
                 },
                 "3-7 until 20, 5-9", ""}),
    probe::CaseName());

INSTANTIATE_TEST_SUITE_P(
    BandLines, Edit,
    testing::Values(EditCase{"LowUp", "3-7", Drag(25, 3, 30, 5), "5-7", "- 225"},
                    EditCase{"HighDown", "1-2 until 10, 3-9", Drag(25, 9, 5, 5),
                             "1-2 until 10, 3-5", "- 225"},
                    EditCase{"LowOntoHigh", "3-7", Drag(25, 3, 25, 7), "7-7", "- 235"},
                    EditCase{"LowAboveHigh", "3-7", Drag(25, 3, 25, 12), "7-12", "- 260"},
                    EditCase{"HighBelowLow", "1-2 until 10, 3-9", Drag(25, 9, 25, 1),
                             "1-2 until 10, 1-3", "- 205"},
                    EditCase{"BelowTheMap", "3-7",
                             [](PathEditors& e) {
                               e.DragTo(e.At(25, 3), {e.X(25), e.Y(0) + 90});
                             },
                             "0-7", "- 200"},
                    EditCase{"NearestChannel", "3-7",
                             [](PathEditors& e) {
                               e.DragTo(e.At(25, 7), {e.X(25), e.Y(9) - 10});
                             },
                             "3-9", "- 245"},
                    EditCase{"BoundaryGoesFirst", "3-7 until 20, 3-7", Drag(20, 3, 12, 8),
                             "3-7 until 12, 3-7", "| 0.20 min"},
                    // The line of a channel that the run does not have is that of the highest one.
                    EditCase{"ChannelAboveTheRun", "3-40",
                             [](PathEditors& e) { e.desk.Click(e.window, e.X(25), e.Y(20)); },
                             "3-20", "- 300"}),
    probe::CaseName());

INSTANTIATE_TEST_SUITE_P(
    RightButton, Edit,
    testing::Values(EditCase{"SplitsASegment", "3-7 until 20, 5-9", RightClickAt(12.2),
                             "3-7 until 12, 3-7 until 20, 5-9", "| 0.20 min"},
                    EditCase{"SplitsTheLast", "3-7 until 20, 5-9", RightClickAt(30.3),
                             "3-7 until 20, 5-9 until 30.5, 5-9", "| 0.51 min"},
                    EditCase{"AtTheRunsEnd", "3-7", RightClickAt(50), "3-7 until 50, 3-7",
                             "| 0.83 min"},
                    EditCase{"BehindTheLast", "3-7 until 20", RightClickAt(30),
                             "3-7 until 20, 7-14 until 30", "|"},
                    EditCase{"OutsideAddsNothingAndDeselects", "3-7 until 20, 5-9",
                             [](PathEditors& e) {
                               e.desk.Click(e.window, e.X(20), e.Y(11));
                               e.RightClick({e.X(0) - 1, e.Y(11)});
                               e.RightClick({e.X(50) + 1, e.Y(11)});
                               e.RightClick({e.X(25), e.Y(0) + 1});
                               e.RightClick({e.X(25), e.Y(20) - 1});
                             },
                             "3-7 until 20, 5-9", ""},
                    EditCase{"ThenDragged", "3-7",
                             [](PathEditors& e) {
                               e.RightClick(e.At(12, 11));
                               e.DragTo(e.At(12, 11), e.At(40, 11));
                             },
                             "3-7 until 40, 3-7", "| 0.67 min"},
                    // A boundary that is added under the pressed button takes part in the drag.
                    EditCase{"WhileDragging", "3-7 until 20, 5-9",
                             [](PathEditors& e) {
                               e.desk.Press(e.window, e.X(20), e.Y(11));
                               e.RightClick(e.At(10, 11));
                               e.desk.Release(e.window, e.X(15), e.Y(11));
                             },
                             "3-7 until 15, 3-7 until 20, 5-9", "| 0.25 min"},
                    EditCase{"OutsideWhileDraggingEndsIt", "3-7 until 20, 5-9",
                             [](PathEditors& e) {
                               e.desk.Press(e.window, e.X(20), e.Y(11));
                               e.RightClick({2, 2});
                               e.desk.Release(e.window, e.X(15), e.Y(11));
                             },
                             "3-7 until 20, 5-9", ""}),
    probe::CaseName());

struct OpenCase {
  const char* name;
  const char* path;
  const char* shown;
};
class Opened : public PathEditors, public testing::WithParamInterface<OpenCase> {};

TEST_P(Opened, CopiesThePathCutToTheRun) {
  OpenPath(GetParam().path);
  EXPECT_EQ(Edited(), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    All, Opened,
    testing::Values(OpenCase{"WithinTheRun", kFour, kFour}, OpenCase{"Empty", "", "7-14"},
                    OpenCase{"PastTheEnd", "1-2 until 10, 3-4 until 50.5, 5-6 until 70, 7-8",
                             "1-2 until 10, 3-4"},
                    OpenCase{"AtTheEnd", "1-2 until 50, 3-4", "1-2 until 50, 3-4"},
                    OpenCase{"WithoutOpenEnd", "1-2 until 10, 3-4 until 60",
                             "1-2 until 10, 3-4 until 60"}),
    probe::CaseName());

TEST_F(PathEditors, AnEmptyPathBecomesTheMiddleThirdOfTheChannels) {
  spectra.channels = 30;
  OpenPath("");
  EXPECT_EQ(Edited(), "10-20");
}

TEST_F(PathEditors, BoundariesSnapToTheSampleInterval) {
  struct {
    float interval;
    int samples;
    double click, end;
  } const cases[] = {
      {2.0F, 3, 1.26, 13 * 0.1},  {0.00005F, 40'001, 1.26, 13 * 0.1},
      {0.0F, 101, 0, kOpenEnd},   {0.5F, 101, 12.7, 12.5},
      {1.0F, 101, 12.3, 12.0},    {0.25F, 17, 1.14, 1.25},
      {-0.5F, 101, 25, kOpenEnd}, {1.01F, 3, 1.26, 13 * 0.1},
  };
  for (const auto& c : cases) {
    run = MakeSpectralRun(spectra);
    run->sampleInterval = c.interval;
    run->sampleCount = c.samples;
    OpenOnRun("1-2");
    RightClick(At(c.click, 11));
    Edited();
    desk.Click(GetDlgItem(window, IDOK));
    // + copies the packed field; the check takes a reference.
    EXPECT_EQ(+path.items[0].endTime, c.end) << c.interval;
    run.reset();
  }
}

// Where the run's end is no multiple of the step, what is dropped there ends past it.
TEST_F(PathEditors, BoundariesAtTheEndStayInOrder) {
  run = MakeSpectralRun(spectra);
  run->sampleInterval = 1.03F;  // steps of 0.1 s
  run->sampleCount = 4;         // until 3.09 s
  OpenOnRun("1-2 until 1, 3-4");
  DragTo(At(1, 11), At(3.09, 11));
  EXPECT_EQ(Edited(), "1-2 until 3.1, 3-4");
  RightClick(At(3.09, 11));
  Edited();
  desk.Click(GetDlgItem(window, IDOK));
  ASSERT_EQ(path.count, 3);
  EXPECT_EQ(+path.items[0].endTime, 3 * static_cast<double>(1.03F));
  EXPECT_EQ(+path.items[1].endTime, 31 * 0.1);
}

TEST_F(PathEditors, CursorsFollowTheHandles) {
  const HCURSOR before = LoadCursorA(nullptr, IDC_WAIT);
  SetCursor(before);
  const EditorWindow& e = OpenPath("3-7 until 20, 5-9");
  const EditorResources& own = Editor();
  struct {
    const char* where;
    POINT at;
    HCURSOR cursor;
  } const cases[] = {
      {"map", {X(10), Y(11)}, own.cross},
      {"boundary", {X(20) - 4, Y(11)}, own.splitH},
      {"boundary, right", {X(20) + 4, Y(11)}, own.splitH},
      {"left of the boundary", {X(20) - 5, Y(11)}, own.cross},
      {"right of the boundary", {X(20) + 5, Y(11)}, own.cross},
      {"outside left", {X(0) - 1, Y(11)}, before},
      {"low line", {X(10), Y(3) + 4}, own.splitV},
      {"below the low line", {X(10), Y(3) + 5}, own.cross},
      {"high line", {X(10), Y(7) - 4}, own.splitV},
      {"above the high line", {X(10), Y(7) - 5}, own.cross},
      {"another segment's line", {X(30), Y(3)}, own.cross},
      {"low line of the last", {X(30), Y(5)}, own.splitV},
      {"boundary and line", {X(20) - 4, Y(3)}, own.splitH},
      {"outside above", {X(10), e.mapRect.top - 1}, before},
      {"first column", {e.mapRect.left, Y(11)}, own.cross},
      {"outside right", {e.mapRect.right, Y(11)}, before},
      {"last column", {e.mapRect.right - 1, Y(11)}, own.cross},
      {"outside below", {X(10), e.mapRect.bottom}, before},
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
  desk.Press(window, X(10), Y(11));
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(PathEditors, CursorsOfOthersAreTheirOwn) {
  OpenPath("3-7");
  desk.MoveTo(window, X(10), Y(11));
  const auto shown = [&](HWND of, int place) {
    SetCursor(nullptr);
    SendMessageA(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(of),
                 MAKELPARAM(place, WM_MOUSEMOVE));
    return GetCursor();
  };
  constexpr int kCaption = 2;
  EXPECT_EQ(shown(window, HTCLIENT), Editor().cross);
  EXPECT_NE(shown(GetDlgItem(window, IDOK), HTCLIENT), Editor().cross);
  EXPECT_NE(shown(window, kCaption), Editor().cross);
}

TEST_F(PathEditors, ButtonsKeepTheirPlaceAtTheBottomRight) {
  OpenPath("3-7");
  const auto fromCorner = [&](int id) {
    RECT button{}, frame{};
    GetWindowRect(GetDlgItem(window, id), &button);
    GetWindowRect(window, &frame);
    return SIZE{frame.right - button.right, frame.bottom - button.bottom};
  };
  const SIZE ok = fromCorner(IDOK), cancel = fromCorner(IDCANCEL);
  for (const SIZE extent : {SIZE{1100, 700}, SIZE{400, 300}, SIZE{40, 20}, SIZE{900, 560}}) {
    desk.Resize(window, extent.cx, extent.cy);
    EXPECT_EQ(fromCorner(IDOK).cx, ok.cx);
    EXPECT_EQ(fromCorner(IDOK).cy, ok.cy);
    EXPECT_EQ(fromCorner(IDCANCEL).cx, cancel.cx);
    EXPECT_EQ(fromCorner(IDCANCEL).cy, cancel.cy);
    // The strip is below the map and its time labels.
    EXPECT_LE(editor->mapRect.bottom, std::max(editor->mapRect.top, LONG{extent.cy - 42 - 20}));
  }
}

// A window without room for a map takes gestures, and does nothing.
TEST_F(PathEditors, WithoutRoomForAMapNothingIsEdited) {
  OpenPath("3-7 until 20, 5-9");
  desk.Press(window, X(20), Y(11));
  desk.Resize(window, 900, 60);
  desk.MoveTo(window, 5, 5);
  desk.Release(window, 9, 9);
  desk.Click(window, 20, 10);
  RightClick({20, 10});
  EXPECT_EQ(Edited(), "3-7 until 20, 5-9");
  // One column wide: nothing can be added, as its column has no time.
  editor->mapRect = {20, 10, 21, 30};
  SendMessageA(window, WM_RBUTTONDOWN, 0, MAKELPARAM(20, 15));
  EXPECT_EQ(Edited(), "3-7 until 20, 5-9");
}

struct CloseCase {
  const char* name;
  std::function<void(PathEditors&)> close;
  bool accepted;
};
class Closed : public PathEditors, public testing::WithParamInterface<CloseCase> {};

TEST_P(Closed, ReplacesThePathOnlyWhenAccepted) {
  SetPath(path, "3-7 until 20, 5-9");
  run = MakeSpectralRun(spectra);
  const HWND parent = Top("parent");
  const SIPathItem* const items = path.items;
  const int capacity = path.capacity;
  window = CallChromatogramIntegrationPathEdit(parent, run.get(), path);
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(IsWindowVisible(window));
  EXPECT_FALSE(IsWindowEnabled(parent));
  desk.RunUntilIdle();
  for (const int x : {100, 200, 300, 500}) desk.Click(window, x, 99, ui::MouseButton::kRight);
  EXPECT_EQ(TextOf(path), "3-7 until 20, 5-9");
  GetParam().close(*this);
  EXPECT_FALSE(IsWindow(window));
  EXPECT_TRUE(IsWindowEnabled(parent));
  EXPECT_EQ(path.items == items, !GetParam().accepted);
  EXPECT_EQ(path.count, GetParam().accepted ? 6 : 2);
  EXPECT_EQ(path.capacity, GetParam().accepted ? 10 : capacity);
}

INSTANTIATE_TEST_SUITE_P(
    All, Closed,
    testing::Values(
        CloseCase{"Ok", [](auto& e) { e.desk.Click(GetDlgItem(e.window, IDOK)); }, true},
        CloseCase{"Enter", [](auto& e) { e.desk.Key(VK_RETURN); }, true},
        CloseCase{"Cancel", [](auto& e) { e.desk.Click(GetDlgItem(e.window, IDCANCEL)); }, false},
        CloseCase{"ClosedWhileDragging",
                  [](auto& e) {
                    e.desk.Press(e.window, 300, 99);
                    e.desk.Close(e.window);
                  },
                  false},
        CloseCase{"Destroyed", [](auto& e) { DestroyWindow(e.window); }, false}),
    probe::CaseName());

TEST_F(PathEditors, ContentThatIsRefusedKeepsThePath) {
  OpenPath("3-7");
  RightClick(At(12, 11));
  editor->agrees = false;
  desk.Click(GetDlgItem(window, IDOK));
  EXPECT_TRUE(IsWindow(window));
  EXPECT_EQ(TextOf(path), "3-7");
}

// No run, one without spectra and one without duration: the window is there, nothing is added.
TEST_F(PathEditors, RunsWithoutAMapAddNothing) {
  for (const int channels : {-1, 0, 2, 21}) {
    SetPath(path, "1-2");
    if (channels > 0) {
      spectra.channels = channels;
      run = MakeSpectralRun(spectra);
      run->sampleInterval = 0;
    }
    window = CallChromatogramIntegrationPathEdit(nullptr, run.get(), path);
    ASSERT_NE(window, nullptr);
    desk.RunUntilIdle();
    desk.Drag(window, {300, 200}, {500, 300});
    RightClick({300, 200});
    desk.Click(GetDlgItem(window, IDOK));
    EXPECT_EQ(TextOf(path), "1-2");
    run.reset();
  }
}

TEST_F(PathEditors, PathsTooLongToCopyAreNotOpened) {
  SetPath(path, "1-2");
  run = MakeSpectralRun(spectra);
  SIPath longer = path;
  longer.count = longer.capacity = 0x7FFFFFFF;
  EXPECT_EQ(CallChromatogramIntegrationPathEdit(nullptr, run.get(), longer), nullptr);
}

}  // namespace
