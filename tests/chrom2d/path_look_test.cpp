// What the editor shows: lines, marks, labels, shading.
#include <algorithm>

#include "platform/gfx/surface.h"
#include "tests/chrom2d/path_fixture.h"

namespace {

class PathLook : public PathEditors {
 protected:
  // The path's lines: "|x" upright over the whole map, "y:x0-x1" level, '*' with a mark at each
  // end.
  std::string Lines() {
    const RECT& map = editor->mapRect;
    std::string text;
    int marks = 0;
    bool begun = false;  // axes and the line over the strip come first
    for (const std::string& line : Journal()) {
      int a = 0, b = 0, c = 0, d = 0;
      if (std::sscanf(line.c_str(), "ellipse %d,%d", &a, &b) == 2 && ++marks % 2 == 0) text += "*";
      if (std::sscanf(line.c_str(), "line %d,%d %d,%d", &a, &b, &c, &d) != 4) continue;
      if (begun && a == c && b == map.top && d == map.bottom) text += " |" + std::to_string(a);
      if (begun && b == d) {
        text += " " + std::to_string(b) + ":" + std::to_string(a) + "-" + std::to_string(c);
      }
      if (a == 0 && b == d) begun = true;
    }
    return text;
  }
  std::string Upright(int x) { return " |" + std::to_string(x); }
  std::string Level(int channel, int x0, int x1) {
    return " " + std::to_string(Y(channel)) + ":" + std::to_string(x0) + "-" + std::to_string(x1);
  }

  // Compares the pixels of the map with the path drawn over `plain`. No handle is selected.
  void ExpectShaded(const std::function<COLORREF(int x, int y)>& plain) {
    const gfx::Surface shown = ui::PictureOf(window);
    const RECT map = editor->mapRect;
    int wrong = 0;
    constexpr int kTicks = 6;  // the axes' ticks reach this far into the map
    for (int x = map.left + kTicks; x < map.right; ++x) {
      const SIPathItem* item = path.items;
      while (X(item->endTime) < x) ++item;
      for (int y = map.top; y < map.bottom - kTicks; ++y) {
        const int low = Y(item->lowChannel), high = Y(item->highChannel);
        COLORREF want = plain(x - map.left, y - map.top);
        if (y > low || y < high) {
          const auto darker = [](int v) { return static_cast<BYTE>((3 * v + 3) / 4); };
          want = RGB(darker(GetRValue(want)), darker(GetGValue(want)), darker(GetBValue(want)));
        }
        if (x == X(item->endTime) || y == low || y == high) want = EditorWindow::axis_col;
        if (shown.Pixel(x, y) == want) continue;
        if (++wrong <= 3)
          ADD_FAILURE() << "at " << x << "," << y << " of segment " << item - path.items;
      }
    }
    EXPECT_EQ(wrong, 0);
  }
};

TEST_F(PathLook, LinesOfSegmentsAndMarksOfTheSelectedOne) {
  OpenPath("3-7 until 20, 5-9 until 30, 0-20");
  const int left = editor->mapRect.left - 1, right = editor->mapRect.right;
  const std::string first = Level(3, left, X(20)) + Level(7, left, X(20));
  const std::string second = Level(5, X(20), X(30)) + Level(9, X(20), X(30));
  const std::string last = Level(0, X(30), right) + Level(20, X(30), right);
  EXPECT_EQ(Lines(), Upright(X(20)) + first + Upright(X(30)) + second + last);
  desk.Click(window, X(30), Y(11));
  EXPECT_EQ(Lines(), Upright(X(20)) + first + Upright(X(30)) + "*" + second + last);
  desk.Click(window, X(25), Y(9));
  EXPECT_EQ(Lines(), Upright(X(20)) + first + Upright(X(30)) + second + "*" + last);
}

// Passed boundaries are hidden, and segments end as they will after the drop.
TEST_F(PathLook, ADraggedBoundaryHidesThoseItPasses) {
  OpenPath("1-2 until 10, 3-4 until 20, 5-6 until 30, 7-8");
  const int left = editor->mapRect.left - 1, right = editor->mapRect.right;
  const auto band = [&](int low, int x0, int x1) {
    return Level(low, x0, x1) + Level(low + 1, x0, x1);
  };
  const std::string start = Upright(X(10)) + band(1, left, X(10));
  desk.Press(window, X(20), Y(11));
  struct {
    double to;
    std::string lines, label;
  } const cases[] = {
      {24.1,
       start + Upright(X(24.1)) + "*" + band(3, X(10), X(24.1)) + Upright(X(30)) +
           band(5, X(24.1), X(30)) + band(7, X(30), right),
       "| 0.40 min"},
      {40, start + Upright(X(40)) + "*" + band(3, X(10), X(40)) + band(7, X(40), right),
       "| 0.67 min"},
      {5,
       band(1, left, X(5)) + Upright(X(5)) + "*" + Upright(X(30)) + band(5, X(5), X(30)) +
           band(7, X(30), right),
       "| 0.08 min"},
      {10,
       band(1, left, X(10)) + Upright(X(10)) + "*" + Upright(X(30)) + band(5, X(10), X(30)) +
           band(7, X(30), right),
       "| 0.17 min"},
  };
  for (const auto& c : cases) {
    desk.MoveTo(window, X(c.to), Y(2));
    EXPECT_EQ(Lines(), c.lines) << c.to;
    EXPECT_EQ(Selected(), c.label);
    EXPECT_EQ(Edited(), "1-2 until 10, 3-4 until 20, 5-6 until 30, 7-8");
  }
  desk.MoveTo(window, right + 50, Y(2));
  EXPECT_EQ(Lines(), start + Upright(right - 1) + "*" + band(3, X(10), right - 1) +
                         band(7, right - 1, right));
}

TEST_F(PathLook, ADraggedBandLineFollowsTheMouse) {
  OpenPath("3-7 until 20, 5-9");
  const int left = editor->mapRect.left - 1;
  desk.Press(window, X(10), Y(7));
  EXPECT_EQ(Selected(), "- 235");
  desk.MoveTo(window, X(40), Y(12) - 5);
  EXPECT_EQ(Selected(), "- 260");
  const std::string row = std::to_string(Y(12) - 5);
  EXPECT_NE(Lines().find(Level(3, left, X(20)) + " " + row + ":" + std::to_string(left)),
            std::string::npos);
  desk.MoveTo(window, X(40), -100);
  EXPECT_EQ(Selected(), "- 300");
  EXPECT_EQ(Edited(), "3-7 until 20, 5-9");
}

TEST_F(PathLook, ShadesTheCachedPictureOutsideTheBands) {
  OpenPath("3-7 until 10.3, 5-15 until 30, 2-6");
  const int width = editor->picture->Width(), height = editor->picture->Height();
  RandomAccess pixels;
  ASSERT_TRUE(pixels.Set(editor->picture.get(), {0, 0, width, height}));
  const auto plain = [&](int x, int y) {
    const BYTE* pixel = pixels.rows[y] + 3 * x;
    return RGB(pixel[2], pixel[1], pixel[0]);
  };
  ExpectShaded(plain);
  // While a resize is pending the picture is shown stretched: the device is darkened.
  desk.Resize(window, 700, 620);
  const int newWidth = editor->mapRect.right - editor->mapRect.left;
  const int newHeight = editor->mapRect.bottom - editor->mapRect.top;
  ASSERT_NE(newWidth, width);
  ASSERT_EQ(editor->picture->Width(), width);
  ExpectShaded([&](int x, int y) {
    return plain((2 * x + 1) * width / (2 * newWidth), (2 * y + 1) * height / (2 * newHeight));
  });
}

// The strip is as grey as the rest of the window, up to the buttons' round corners.
TEST_F(PathLook, ButtonsStandOnTheWindowsBackground) {
  OpenPath("3-7");
  const gfx::Surface shown = desk.Picture(window);
  for (const int id : {IDOK, IDCANCEL}) {
    RECT button{0, 0, 0, 0};
    POINT origin{0, 0};
    GetWindowRect(GetDlgItem(window, id), &button);
    ClientToScreen(window, &origin);
    const int x = button.left - origin.x, y = button.top - origin.y;
    EXPECT_EQ(shown.Pixel(x, y), RGB(0xC0, 0xC0, 0xC0));
    EXPECT_NE(shown.Pixel(x + 10, y + 5), RGB(0xC0, 0xC0, 0xC0));
  }
}

// A map of one colour.
TEST_F(PathLook, ShadesWhatIsThereWithoutAPicture) {
  run = MakeSpectralRun(spectra);
  run->sampleCount = 0;
  OpenOnRun("3-7");
  ASSERT_EQ(editor->picture, nullptr);
  const COLORREF first = ColorRefOf(TheColorScale().colorTable[0]);
  ExpectShaded([&](int, int) { return first; });
}

TEST_F(PathLook, BandsOfChannelsThatAreNotThereHaveNoLine) {
  OpenPath("25-30 until 10, -3--2 until 30, 12-5");
  const int left = editor->mapRect.left - 1, right = editor->mapRect.right;
  EXPECT_EQ(Lines(), Upright(X(10)) + Level(20, left, X(10)) + Upright(X(30)) +
                         Level(0, X(10), X(30)) + Level(12, X(30), right) + Level(5, X(30), right));
}

// Channel numbers need not rise with the wavelength: the lines are those of the outermost channels
// from below and above that are within the band's number on that side.
TEST_F(PathLook, LinesOfChannelsInFallingOrder) {
  spectra.lowest = 300;
  spectra.step = -5;
  OpenPath("3-7");
  const int left = editor->mapRect.left - 1, right = editor->mapRect.right;
  EXPECT_EQ(Lines(), Level(20, left, right) + Level(0, left, right));
}

TEST_F(PathLook, RunsShorterThanAStepShowNoPath) {
  run = MakeSpectralRun(spectra);
  run->sampleInterval = 0.00005F;  // 5 ms in all, steps of 100 ms
  OpenOnRun("1-2 until 0.002, 3-4");
  EXPECT_EQ(Lines(), "");
  EXPECT_EQ(Edited(), "1-2 until 0.002, 3-4");
}

}  // namespace
