// What the editor shows: lines, marks, labels, shading.
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
    for (const std::string& line : Drawn()) {
      int a = 0, b = 0, c = 0, d = 0;
      if (std::sscanf(line.c_str(), "ellipse %d,%d", &a, &b) == 2 && ++marks % 2 == 0) text += "*";
      if (std::sscanf(line.c_str(), "line %d,%d %d,%d", &a, &b, &c, &d) != 4) continue;
      if (a == c && b == map.top && d == map.bottom) text += Upright(a);
      if (b == d) text += LevelAt(b, a, c);
    }
    return text;
  }
  static std::string Upright(int x) { return " |" + std::to_string(x); }
  static std::string LevelAt(int y, int x0, int x1) {
    return " " + std::to_string(y) + ":" + std::to_string(x0) + "-" + std::to_string(x1);
  }
  std::string Level(int channel, int x0, int x1) { return LevelAt(Y(channel), x0, x1); }
  std::string Band(int low, int high, int x0, int x1) {
    return Level(low, x0, x1) + Level(high, x0, x1);
  }
  int Left() { return editor->mapRect.left - 1; }
  int Right() { return editor->mapRect.right; }

  // Compares the pixels of the map with the path drawn over `plain`. No handle is selected.
  void ExpectShaded(const std::function<COLORREF(int x, int y)>& plain) {
    const gfx::Surface shown = ui::PictureOf(window);
    const RECT map = editor->mapRect;
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
        ASSERT_EQ(shown.Pixel(x, y), want) << x << "," << y << " of " << item - path.items;
      }
    }
  }
};

TEST_F(PathLook, LinesOfSegmentsAndMarksOfTheSelectedOne) {
  // The line of a channel that the run does not have is that of the highest one.
  OpenPath("3-7 until 20, 5-9 until 30, 0-40");
  const std::string first = Band(3, 7, Left(), X(20));
  const std::string second = Band(5, 9, X(20), X(30));
  const std::string last = Band(0, 20, X(30), Right());
  EXPECT_EQ(Lines(), Upright(X(20)) + first + Upright(X(30)) + second + last);
  desk.Click(window, X(30), Y(11));
  EXPECT_EQ(Lines(), Upright(X(20)) + first + Upright(X(30)) + "*" + second + last);
  desk.Click(window, X(25), Y(9));
  EXPECT_EQ(Lines(), Upright(X(20)) + first + Upright(X(30)) + second + "*" + last);
}

// Passed boundaries are hidden, and segments end as they will after the drop.
TEST_F(PathLook, ADraggedBoundaryHidesThoseItPasses) {
  OpenPath("1-2 until 10, 3-4 until 20, 5-6 until 30, 7-8");
  desk.Press(window, X(20), Y(11));
  struct {
    double to;
    std::string lines, label;
  } const cases[] = {
      {40,
       Upright(X(10)) + Band(1, 2, Left(), X(10)) + Upright(X(40)) + "*" +
           Band(3, 4, X(10), X(40)) + Band(7, 8, X(40), Right()),
       "0.67 min"},
      {5,
       Band(1, 2, Left(), X(5)) + Upright(X(5)) + "*" + Upright(X(30)) + Band(5, 6, X(5), X(30)) +
           Band(7, 8, X(30), Right()),
       "0.08 min"},
  };
  for (const auto& c : cases) {
    desk.MoveTo(window, X(c.to), Y(2));
    EXPECT_EQ(Lines(), c.lines) << c.to;
    EXPECT_EQ(Selected(), c.label);
    EXPECT_EQ(Edited(), "1-2 until 10, 3-4 until 20, 5-6 until 30, 7-8");
  }
}

TEST_F(PathLook, ADraggedBandLineFollowsTheMouse) {
  OpenPath("3-7");
  desk.Press(window, X(10), Y(7));
  EXPECT_EQ(Selected(), "235");
  desk.MoveTo(window, X(40), Y(12) - 5);
  EXPECT_EQ(Selected(), "260");
  EXPECT_EQ(Lines(), Level(3, Left(), Right()) + LevelAt(Y(12) - 5, Left(), Right()) + "*");
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

}  // namespace
