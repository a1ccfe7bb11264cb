// The program on a display: its windows show what the same windows show without a screen, and the
// mouse does on them what it does there.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "app/demo_spectra.h"
#include "app/map_colours.h"
#include "app/map_run.h"
#include "app/path_file.h"
#include "elugraph/chrom2d/chrom2d_base.h"
#include "elugraph/chrom2d/integration_path_dlg.h"
#include "embedded/controls/host_module.h"
#include "embedded/settings.h"
#include "platform/gfx/context.h"
#include "platform/gfx/text_engine.h"
#include "platform/ui/headless.h"
#include "tests/screen/x_screen.h"

namespace screen {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPath = "end_s,low_nm,high_nm\n180,210,260\n420,230,300\nopen,300,380\n";
constexpr int kNoButtons = 56;  // rows at the editor's bottom edge that buttons take
constexpr int kTopStrip = 44;   // and at the map's top edge
constexpr int kSwatches = 80;   // rows of the colour dialog down to its swatches' end

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// A map with the conversions of the editor's window, which takes a strip off its bottom.
class Positions : public TChrom2DBase {
 public:
  explicit Positions(chromatogram& run)
      : TChrom2DBase(nullptr,
                     ResIdCheck(embedded::kPathEditorDialog, embedded::HostModule(), RT_DIALOG),
                     &run, nullptr) {
    _AddRef();
    Create(0);
  }
  bool ViewsCalc(HDC hdc, const RECT& rect) override {
    RECT ok{0, 0, 0, 0}, window{0, 0, 0, 0};
    GetWindowRect(GetDlgItem(hwnd, IDOK), &ok);
    GetWindowRect(hwnd, &window);
    const bool fits = TChrom2DBase::ViewsCalc(hdc, rect);
    mapRect.bottom -= window.bottom - ok.top;
    return fits;
  }
};

class RealWindow : public testing::Test {
 protected:
  void SetUp() override {
    if (!XScreen::IsThere()) GTEST_SKIP() << "Xvfb and xdotool are not installed";
    std::string pattern = (fs::temp_directory_path() / "elugraph-screen-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder = pattern;
    settings = embedded::SettingsPath();
    setenv("ELUGRAPH_SETTINGS", (folder / "settings.ini").c_str(), 1);
    x = std::make_unique<XScreen>(folder);
    if (x->Display().empty()) {
      GTEST_SKIP() << "the display server does not start here: " << Contents(folder / "server.log");
    }
    std::string error;
    app::RunData data = app::DemoSpectra();
    ASSERT_TRUE(app::MakeMapRun(data, {}, map, error)) << error;
    ASSERT_TRUE(app::SetMapColours({}, error)) << error;
    twin = std::make_unique<ui::Headless>(gfx::SystemText());
    std::ofstream(folder / "in.csv") << kPath;
  }
  void TearDown() override {
    if (HasFailure() && x != nullptr) {
      Keep("failed");
      ADD_FAILURE() << "the program said: " << Contents(folder / "program.log");
    }
    program.reset();
    twin.reset();
    x.reset();
    if (!folder.empty()) {
      fs::remove_all(folder);
      // What this program itself writes at its end must not bring the folder back.
      setenv("ELUGRAPH_SETTINGS", settings.c_str(), 1);
    }
    embedded::KeepSettings(true);
  }

  // Starts it and finds its window.
  void Start(std::vector<std::string> command, const char* title) {
    command.insert(command.begin(), ELUGRAPH_PROGRAM);
    program = std::make_unique<Process>();
    program->Start(command,
                   {"DISPLAY=" + x->Display(), "SDL_VIDEODRIVER=x11", "ELUGRAPH_SCALE=100",
                    "LSAN_OPTIONS=print_suppressions=0:suppressions=" ELUGRAPH_SOURCE_DIR
                    "/tests/screen/leaks.supp"},
                   folder / "program.log");
    ASSERT_TRUE(x->FindWindow(title, place)) << Contents(folder / "program.log");
  }
  void StartEditor() {
    Start({"path", "--path", (folder / "in.csv").string(), "--save", Saved().string()},
          "integration path");
  }
  bool LeaveWithMouse() const { return x->Do("mousemove 1279 1023"); }
  fs::path Saved() const { return folder / "out.csv"; }

  POINT OnScreen(POINT at) const { return {place.left + at.x, place.top + at.y}; }
  bool Drag(POINT from, POINT to) const {
    const POINT middle{(from.x + to.x) / 2, (from.y + to.y) / 2};
    return x->Drag({OnScreen(from), OnScreen(middle), OnScreen(to)});
  }
  // The control's middle in its window, where that is a twin of the one on the screen.
  static POINT MiddleOf(HWND window, int control) {
    RECT area{0, 0, 0, 0}, whole{0, 0, 0, 0};
    GetWindowRect(GetDlgItem(window, control), &area);
    GetWindowRect(window, &whole);
    return {(area.left + area.right) / 2 - whole.left, (area.top + area.bottom) / 2 - whole.top};
  }
  bool Click(HWND twinWindow, int control) const {
    return x->Drag({OnScreen(MiddleOf(twinWindow, control))});
  }
  // Pixels in the rows top … bottom − 1 of the window that are not those of the picture.
  long Different(const gfx::Surface& picture, int top, int bottom) const {
    const gfx::Surface shown = x->Picture();
    long count = 0;
    for (int row = top; row < bottom; ++row) {
      for (int column = 0; column < picture.Width(); ++column) {
        const POINT at = OnScreen({column, row});
        count += shown.Pixel(at.x, at.y) != picture.Pixel(column, row);
      }
    }
    return count;
  }
  bool Shows(const gfx::Surface& picture, int top, int bottom) const {
    return Until([&] { return Different(picture, top, bottom) == 0; });
  }
  // For people to look at.
  void Keep(const std::string& name) const {
    const char* to = std::getenv("ELUGRAPH_SCREENSHOTS");
    std::string error;
    if (to != nullptr) gfx::SavePng(x->Picture(), to + ("/" + name + ".png"), error);
  }

  fs::path folder;
  std::string settings;
  std::unique_ptr<XScreen> x;
  std::unique_ptr<Process> program;
  app::MapRun map;
  std::unique_ptr<ui::Headless> twin;
  RECT place{0, 0, 0, 0};
};

TEST_F(RealWindow, PathIsEditedByMouse) {
  SIPathHolder path, wanted;
  std::string error;
  for (SIPath* each : {static_cast<SIPath*>(&path), static_cast<SIPath*>(&wanted)}) {
    ASSERT_TRUE(app::ParsePath("in.csv", kPath, map.wavesNm, *each, error)) << error;
  }
  const HWND editor = CallChromatogramIntegrationPathEdit(nullptr, map.run.get(), path);
  ASSERT_NE(editor, nullptr);
  Positions at(*map.run);
  twin->Picture(at.hwnd);
  const gfx::Surface before = twin->Picture(editor);

  ASSERT_NO_FATAL_FAILURE(StartEditor());
  ASSERT_EQ(place.right - place.left, before.Width());
  ASSERT_EQ(place.bottom - place.top, before.Height());
  ASSERT_TRUE(LeaveWithMouse());
  const int buttons = before.Height() - kNoButtons;
  ASSERT_TRUE(Shows(before, 0, buttons));
  Keep("editor");

  // The first boundary to the right, and the last band's lower line down.
  const POINT boundary{at.Time2X(180), at.ChanV2Y(350)};
  const POINT moved{boundary.x + 100, boundary.y + 7};
  wanted.items[0].endTime = std::floor(at.X2Time(moved.x) / 0.5 + 0.5) * 0.5;
  const POINT line{at.Time2X(600), at.ChanV2Y(300)};
  const POINT lowered{line.x - 5, line.y + 70};
  wanted.items[2].lowChannel = at.GetMapChannel(static_cast<int>(lowered.y));
  ASSERT_GT(+wanted.items[0].endTime, 200);
  ASSERT_LT(+wanted.items[2].lowChannel, 50);
  twin->Drag(editor, boundary, moved);
  twin->Drag(editor, line, lowered);
  ASSERT_TRUE(Drag(boundary, moved));
  ASSERT_TRUE(Drag(line, lowered));
  EXPECT_TRUE(Shows(twin->Picture(editor), 0, buttons));
  EXPECT_GT(Different(before, 0, buttons), 1000);
  Keep("edited");

  EXPECT_FALSE(fs::exists(Saved()));
  ASSERT_TRUE(Click(editor, IDOK));
  EXPECT_EQ(program->Wait(), 0);
  EXPECT_EQ(Contents(Saved()), app::PathText(wanted, map.wavesNm));
  EXPECT_FALSE(fs::exists(folder / "settings.ini"));
}

// The first picture put another window in the place of the one that was there: what the mouse did
// before it was lost.
TEST_F(RealWindow, CancelledPathIsNotWritten) {
  SIPathHolder path;
  std::string error;
  ASSERT_TRUE(app::ParsePath("in.csv", kPath, map.wavesNm, path, error)) << error;
  const HWND editor = CallChromatogramIntegrationPathEdit(nullptr, map.run.get(), path);
  ASSERT_NE(editor, nullptr);
  Positions at(*map.run);
  twin->Picture(at.hwnd);
  ASSERT_NO_FATAL_FAILURE(StartEditor());
  const POINT boundary{at.Time2X(180), at.ChanV2Y(350)};
  ASSERT_TRUE(Drag(boundary, {boundary.x + 60, boundary.y}));
  ASSERT_TRUE(Click(editor, IDCANCEL));
  EXPECT_EQ(program->Wait(), 1);
  EXPECT_FALSE(fs::exists(Saved()));
  EXPECT_EQ(Contents(folder / "program.log"),
            "elugraph: cancelled; " + Saved().string() + " is not written\n");
}

TEST_F(RealWindow, ColoursOfAMapAreChangedByMouse) {
  auto* window =
      new TChrom2DBase(nullptr, ResIdCheck(embedded::kMapDialog, embedded::HostModule(), RT_DIALOG),
                       map.run.get(), nullptr);
  const HWND shown = window->Create(0);
  const gfx::Surface before = twin->Picture(shown);
  ASSERT_NO_FATAL_FAILURE(Start({"map"}, "spectral map"));
  const RECT mapPlace = place;
  ASSERT_EQ(place.right - place.left, before.Width());
  ASSERT_TRUE(LeaveWithMouse());
  ASSERT_TRUE(Shows(before, kTopStrip, before.Height()));
  Keep("map");

  ASSERT_TRUE(Click(shown, 652));
  twin->Click(GetDlgItem(shown, 652));
  const HWND dialog = ui::TopLevelWindows().back();
  ASSERT_NE(GetDlgItem(dialog, 665), nullptr);
  ASSERT_TRUE(x->FindWindow("Map colours", place));
  ASSERT_TRUE(Shows(twin->Picture(dialog), 0, kSwatches));
  Keep("colours");
  for (const int control : {665, IDOK}) {  // linear
    ASSERT_TRUE(Click(dialog, control));
    twin->Click(GetDlgItem(dialog, control));
  }
  place = mapPlace;
  const gfx::Surface after = twin->Picture(shown);
  EXPECT_TRUE(Shows(after, kTopStrip, after.Height()));
  EXPECT_GT(Different(before, kTopStrip, before.Height()), 10'000);
  Keep("linear");

  ASSERT_TRUE(x->Do("key Escape"));
  EXPECT_EQ(program->Wait(), 0);
  EXPECT_EQ(embedded::FindEntry(Contents(folder / "settings.ini"), "CHROM_2D_COLORS", "FORMULA"),
            "LINE");
}

}  // namespace
}  // namespace screen
