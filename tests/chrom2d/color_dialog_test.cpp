// The colour dialog: its buttons, its swatches, what it leaves behind.
#include "elugraph/chrom2d/color_dlg.h"

#include <cctype>

#include "embedded/controls/palette.h"
#include "platform/gfx/surface.h"
#include "tests/chrom2d/map_fixture.h"

namespace {

constexpr int kAdd = 662, kDelete = 663, kChange = 664, kLinear = 665, kLogarithmic = 666,
              kSwatch = 670;
// What the user picks from the palette.
constexpr int kPickedRow = 4, kPickedColumn = 6;
const COLORREF kPicked = embedded::PaletteColor(kPickedRow, kPickedColumn);

class ColorDialog : public Maps {
 protected:
  HWND OpenDialog(TChrom2DBase* owner = nullptr) {
    dialog = (new TChrom2DColorDlg(owner))->Create(-1);
    EXPECT_EQ(PostExecute(dialog, nullptr, nullptr, true), dialog);
    desk.RunUntilIdle();
    return dialog;
  }
  HWND Control(int id) const { return GetDlgItem(dialog, id); }

  // Each character is one thing that a user does: a digit selects a swatch; + adds and c changes,
  // with a colour picked; ( and [ are the same with the palette cancelled; a and e the same where
  // no palette may open; d deletes, l and g choose the formula, k is OK and x Cancel.
  void Do(const std::string& actions) {
    for (const char action : actions) Do(action);
  }
  void Do(char action) {
    if (std::isdigit(action) != 0) return desk.Click(Control(kSwatch + action - '0'));
    static const std::map<char, int> ids = {{'+', kAdd},    {'(', kAdd},    {'a', kAdd},
                                            {'c', kChange}, {'[', kChange}, {'e', kChange},
                                            {'d', kDelete}, {'l', kLinear}, {'g', kLogarithmic},
                                            {'k', IDOK},    {'x', IDCANCEL}};
    const bool accepts = action == '+' || action == 'c';
    if (accepts || action == '(' || action == '[') {
      desk.Then([this] { PickColor(); });
      desk.Then([this, accepts] { desk.Key(accepts ? VK_RETURN : VK_ESCAPE); });
    }
    const std::int64_t before = desk.Now();
    // At once: a click of the mouse would take the steps before it is complete.
    SendMessageA(Control(ids.at(action)), BM_CLICK, 0, 0);
    desk.RunUntilIdle();
    EXPECT_EQ(desk.StepsLeft(), 0U) << "no palette for " << action;
    EXPECT_EQ(desk.Now(), before) << "a palette nobody asked for: " << action;
  }
  void PickColor() {
    const HWND grid = GetDlgItem(GetActiveWindow(), embedded::kGridId);
    RECT client{};
    GetClientRect(grid, &client);
    desk.Click(grid, (2 * kPickedColumn + 1) * client.right / (2 * embedded::kPaletteColumns),
               (2 * kPickedRow + 1) * client.bottom / (2 * embedded::kPaletteRows));
  }

  // Faces of the swatches that are shown, as they are painted.
  Colors Shown() {
    Colors colors;
    for (int i = 0; i < ColorScale::kMaxColors; ++i) {
      if (!IsWindowVisible(Control(kSwatch + i))) continue;
      EXPECT_EQ(static_cast<int>(colors.size()), i) << "a gap";
      const gfx::Surface picture = desk.Picture(Control(kSwatch + i));
      colors.push_back(picture.Pixel(picture.Width() / 2, picture.Height() / 2));
    }
    return colors;
  }
  // Swatches that look pressed, as digits.
  std::string Pressed() {
    std::string pressed;
    for (int i = 0; i < ColorScale::kMaxColors; ++i) {
      if (!IsWindowVisible(Control(kSwatch + i))) continue;
      const COLORREF corner = desk.Picture(Control(kSwatch + i)).Pixel(0, 0);
      if (corner == GetSysColor(COLOR_3DSHADOW)) pressed += static_cast<char>('0' + i);
    }
    return pressed;
  }

  HWND dialog = nullptr;
};

const Colors kFive = {RGB(10, 0, 0), RGB(20, 0, 90), RGB(30, 0, 0), RGB(40, 0, 0), RGB(50, 0, 99)};
const Colors kTwo = {RGB(1, 2, 3), RGB(200, 5, 6)};
const Colors kTen = {1, 2, 3, 4, 5, 6, 7, 8, 9, kPicked};

// Some of five colours, with the picked one for the others.
Colors Some(std::initializer_list<int> indices) {
  Colors colors;
  for (const int i : indices)
    colors.push_back(i >= 0 ? kFive[static_cast<std::size_t>(i)] : kPicked);
  return colors;
}
constexpr int kNew = -1;

TEST_F(ColorDialog, ActionsChangeTheScaleAtOnce) {
  struct {
    Colors before;
    const char* actions;
    Colors after;
    const char* pressed;  // swatches that look pressed then; null: the dialog has closed
    ScaleFormula formula = ScaleFormula::LINE;
  } const cases[] = {
      {kFive, "1gl3", kFive, "3"},
      {kFive, "+5c", Some({0, 1, 2, 3, 4, kNew}), "5"},
      {kFive, "(", kFive, ""},
      {kTen, "9d+a", kTen, "9"},
      {kFive, "0dd", Some({2, 3, 4}), "0"},
      // Deleting the last one: then no colour is selected any more.
      {kFive, "4dde", Some({0, 1, 2, 3}), ""},
      {kTwo, "1d", kTwo, "1"},
      // An added colour must not take the brush of the one before along.
      {kFive, "0d+0d", Some({2, 3, 4, kNew}), "0"},
      {kFive, "2c", Some({0, 1, kNew, 3, 4}), "2"},
      {kFive, "e2[", kFive, "2"},
      {kFive, "+0dk", Some({1, 2, 3, 4, kNew}), nullptr},
      {kTwo, "++x", kTwo, nullptr},
      {kFive, "2c0d+1d+gx", kFive, nullptr, ScaleFormula::LOG},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.actions);
    SetScale(c.before);
    OpenDialog();
    EXPECT_EQ(Shown(), c.before);
    Do(c.actions);
    EXPECT_EQ(ScaleColors(), c.after);
    EXPECT_EQ(TheColorScale().formula, c.formula);
    // The highest value has the last colour, but for the last step.
    EXPECT_NEAR(GetBValue(ColorOf(0, 1.0, 1)), GetBValue(c.after.back()), 1);
    EXPECT_EQ(IsWindow(dialog), c.pressed != nullptr);
    if (c.pressed == nullptr) continue;
    EXPECT_EQ(Shown(), c.after);
    EXPECT_EQ(Pressed(), c.pressed);
    DestroyWindow(dialog);
  }
}

TEST_F(ColorDialog, ShowsTheFormulaOfTheScale) {
  SetScale(kTwo, ScaleFormula::LOG);
  OpenDialog();
  EXPECT_EQ(IsDlgButtonChecked(dialog, kLinear), 0U);
  EXPECT_EQ(IsDlgButtonChecked(dialog, kLogarithmic), 1U);
}

// Each change repaints the map from the picture that it has.
TEST_F(ColorDialog, RepaintsItsMapWithoutRebuildingIt) {
  MapWindow& map = Open();
  OpenDialog(&map);
  EXPECT_EQ(GetParent(dialog), map.hwnd);
  const int builds = map.builds;
  for (const char* action : {"+", "1d", "1c", "g", "l"}) {
    const int images = map.images;
    Do(action);
    EXPECT_GT(map.images, images) << action;
  }
  EXPECT_EQ(map.builds, builds);
}

// The scale's count is then another one than the number of brushes that each has made.
TEST_F(ColorDialog, SeveralShareTheScale) {
  SetScale(kFive);
  const HWND first = OpenDialog(), second = OpenDialog();
  Do("0d1d");
  dialog = first;
  Do("++0d");
  dialog = second;
  Do("+0c");
  dialog = first;
  Do("0dx");
  EXPECT_EQ(ScaleColors(), kFive);
  dialog = second;
  Do("x");
  EXPECT_EQ(ScaleColors(), kFive);
}

// Somebody else still holds the object when its map has gone.
TEST_F(ColorDialog, OutlivesItsMap) {
  MapWindow& map = Open();
  auto* object = new TChrom2DColorDlg(&map);
  object->_AddRef();
  object->Create(-1);
  DestroyWindow(map.hwnd);
  EXPECT_EQ(object->hwnd, nullptr);
  for (const int id : {kLogarithmic, kSwatch, kDelete, kLinear, IDCANCEL}) {
    object->EvCommand(static_cast<UINT>(id), nullptr, BN_CLICKED);
  }
  EXPECT_EQ(TheColorScale().formula, ScaleFormula::LINE);
  EXPECT_EQ(object->_Release(), 0);
}

}  // namespace
