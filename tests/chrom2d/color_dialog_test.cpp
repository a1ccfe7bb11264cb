// The colour dialog: its buttons, its swatches, what it leaves behind.
#include "elugraph/chrom2d/color_dlg.h"

#include <cctype>

#include "elugraph/chrom2d/swatch_bevel.h"
#include "embedded/controls/palette.h"
#include "platform/gfx/surface.h"
#include "tests/chrom2d/map_fixture.h"

namespace {

using Colors = std::vector<COLORREF>;

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

  static Colors ScaleColors() {
    Colors colors;
    for (int i = 0; i < TheColorScale().colorCount; ++i) {
      colors.push_back(ColorRefOf(TheColorScale().colorTable[i]));
    }
    return colors;
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

struct ActionCase {
  const char* name;
  Colors before;
  const char* actions;
  Colors after;
  const char* pressed;  // swatches that look pressed then; null: the dialog has closed
  ScaleFormula formula = ScaleFormula::LINE;
};

class Actions : public ColorDialog, public testing::WithParamInterface<ActionCase> {};

TEST_P(Actions, ChangeTheScaleAtOnceAndLeaveNothingBehind) {
  const ActionCase& c = GetParam();
  SetScale(c.before);
  OpenDialog();
  EXPECT_EQ(Shown(), c.before);
  Do(c.actions);
  EXPECT_EQ(ScaleColors(), c.after);
  EXPECT_EQ(TheColorScale().formula, c.formula);
  // The highest value has the last colour, but for the last step.
  const MapColor top = ColorOfValue({0, 1.0}, 1);
  EXPECT_NEAR(top.red, GetRValue(c.after.back()), 1);
  EXPECT_NEAR(top.blue, GetBValue(c.after.back()), 1);
  EXPECT_EQ(IsWindow(dialog), c.pressed != nullptr);
  if (c.pressed == nullptr) return;
  EXPECT_EQ(Shown(), c.after);
  EXPECT_EQ(Pressed(), c.pressed);
}

const Colors kFive = {RGB(10, 0, 0), RGB(20, 0, 90), RGB(30, 0, 0), RGB(40, 0, 0), RGB(50, 0, 99)};
const Colors kTwo = {RGB(1, 2, 3), RGB(200, 5, 6)};
const Colors kNine = {1, 2, 3, 4, 5, 6, 7, 8, 9};
const Colors kTen = {1, 2, 3, 4, 5, 6, 7, 8, 9, kPicked};

// Some of five colours, with the picked one for the others.
Colors Some(std::initializer_list<int> indices) {
  Colors colors;
  for (const int i : indices)
    colors.push_back(i >= 0 ? kFive[static_cast<std::size_t>(i)] : kPicked);
  return colors;
}
constexpr int kNew = -1;

INSTANTIATE_TEST_SUITE_P(
    All, Actions,
    testing::Values(
        ActionCase{"Nothing", kTwo, "", kTwo, ""}, ActionCase{"Selecting", kFive, "13", kFive, "3"},
        ActionCase{"Adding", kFive, "+", Some({0, 1, 2, 3, 4, kNew}), ""},
        ActionCase{"AddingAndSelecting", kFive, "+5c", Some({0, 1, 2, 3, 4, kNew}), "5"},
        ActionCase{"AddingCancelled", kFive, "(", kFive, ""},
        ActionCase{"AddingUpToTen", kNine, "+", kTen, ""},
        ActionCase{"AddingBeyondTen", kTen, "a", kTen, ""},
        ActionCase{"DeletingTheMiddle", kFive, "2d", Some({0, 1, 3, 4}), "2"},
        ActionCase{"DeletingTheSamePlace", kFive, "1dd", Some({0, 3, 4}), "1"},
        ActionCase{"DeletingTheFirst", kFive, "0d", Some({1, 2, 3, 4}), "0"},
        // Then no colour is selected any more.
        ActionCase{"DeletingTheLast", kFive, "4dde", Some({0, 1, 2, 3}), ""},
        ActionCase{"DeletingWithoutSelection", kFive, "d", kFive, ""},
        ActionCase{"DeletingBelowTwo", kTwo, "1d", kTwo, "1"},
        // An added colour must not take the brush of the one before along.
        ActionCase{"DeletingAndAdding", kFive, "0d+0d", Some({2, 3, 4, kNew}), "0"},
        ActionCase{"DeletingFromTen", kTen, "9d8d7d", {1, 2, 3, 4, 5, 6, 7}, ""},
        ActionCase{"Changing", kFive, "2c", Some({0, 1, kNew, 3, 4}), "2"},
        ActionCase{"ChangingTheLast", kFive, "4c", Some({0, 1, 2, 3, kNew}), "4"},
        ActionCase{"ChangingCancelled", kFive, "2[", kFive, "2"},
        ActionCase{"ChangingWithoutSelection", kFive, "e", kFive, ""},
        ActionCase{"Logarithmic", kFive, "g", kFive, "", ScaleFormula::LOG},
        ActionCase{"LinearAgain", kFive, "gl", kFive, ""},
        ActionCase{"Accepting", kFive, "+0dk", Some({1, 2, 3, 4, kNew}), nullptr},
        ActionCase{"CancellingAnAddition", kTwo, "++x", kTwo, nullptr},
        ActionCase{"CancellingADeletion", kFive, "0dddx", kFive, nullptr},
        ActionCase{"CancellingAll", kFive, "2c0d+1d+gx", kFive, nullptr, ScaleFormula::LOG}),
    probe::CaseName());

TEST_F(ColorDialog, ShowsTheFormulaOfTheScale) {
  for (const ScaleFormula formula : {ScaleFormula::LINE, ScaleFormula::LOG}) {
    SetScale(kTwo, formula);
    OpenDialog();
    const bool log = formula == ScaleFormula::LOG;
    EXPECT_EQ(IsDlgButtonChecked(dialog, kLinear), log ? 0U : 1U);
    EXPECT_EQ(IsDlgButtonChecked(dialog, kLogarithmic), log ? 1U : 0U);
    DestroyWindow(dialog);
  }
}

TEST_F(ColorDialog, AnswersForTheFacesOfItsSwatchesOnly) {
  SetScale(kTwo);
  OpenDialog();
  const HDC hdc = GetDC(dialog);
  const auto ask = [&](int id) {
    return SendMessageA(dialog, WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(hdc),
                        reinterpret_cast<LPARAM>(Control(id)));
  };
  LOGBRUSH brush{};
  ASSERT_NE(GetObjectA(reinterpret_cast<HGDIOBJ>(ask(kSwatch + 1)), sizeof brush, &brush), 0);
  EXPECT_EQ(brush.lbColor, kTwo[1]);
  EXPECT_EQ(GetBkColor(hdc), kTwo[1]);
  // A hidden swatch and a push button get what other buttons get.
  EXPECT_EQ(ask(kSwatch + 2), ask(kAdd));
  EXPECT_NE(GetBkColor(hdc), kTwo[1]);
  ReleaseDC(dialog, hdc);
  // Other notifications than clicks select nothing.
  SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(kSwatch, 1), 0);
  EXPECT_EQ(Pressed(), "");
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
  const int images = map.images;
  Do("2(");  // nothing changed
  EXPECT_EQ(map.images, images);
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

struct BevelCase {
  const char* name;
  int scale;
  bool selected;
  std::vector<std::string> rows;
};

class Bevels : public probe::Fixture, public testing::WithParamInterface<BevelCase> {};

// H highlight, L light, S shadow, D dark shadow; the face stays as it is.
TEST_P(Bevels, AreTwoEdgesAlongTheSides) {
  const BevelCase& c = GetParam();
  ui::SetScale(c.scale);
  const int width = static_cast<int>(c.rows[0].size()), height = static_cast<int>(c.rows.size());
  gfx::Surface surface(width + 2, height + 2, RGB(255, 0, 255));
  const HDC hdc = gfx::CreateRasterContext(surface, gfx::BuiltinText());
  DrawSwatchBevel(hdc, {1, 1, 1 + width, 1 + height}, c.selected);
  DeleteDC(hdc);
  const std::map<COLORREF, char> marks = {{GetSysColor(COLOR_3DHIGHLIGHT), 'H'},
                                          {GetSysColor(COLOR_3DLIGHT), 'L'},
                                          {GetSysColor(COLOR_3DSHADOW), 'S'},
                                          {GetSysColor(COLOR_3DDKSHADOW), 'D'},
                                          {RGB(255, 0, 255), '.'}};
  ASSERT_EQ(marks.size(), 5U);
  std::vector<std::string> expected(1, std::string(static_cast<std::size_t>(width) + 2, '.'));
  for (const std::string& row : c.rows) expected.push_back("." + row + ".");
  expected.push_back(expected.front());
  std::vector<std::string> got;
  for (int y = 0; y < height + 2; ++y) {
    got.emplace_back();
    for (int x = 0; x < width + 2; ++x) got.back() += marks.at(surface.Pixel(x, y));
  }
  EXPECT_EQ(got, expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, Bevels,
    testing::Values(BevelCase{"Raised",
                              100,
                              false,
                              {"HHHHHHD",  //
                               "HLLLLSD",  //
                               "HL...SD",  //
                               "HL...SD",  //
                               "HSSSSSD",  //
                               "DDDDDDD"}},
                    BevelCase{"Pressed",
                              100,
                              true,
                              {"SSSSSSH",  //
                               "SDDDDLH",  //
                               "SD...LH",  //
                               "SD...LH",  //
                               "SLLLLLH",  //
                               "HHHHHHH"}},
                    BevelCase{"RaisedLarge",
                              200,
                              false,
                              {"HHHHHHHHDD",  //
                               "HHHHHHHHDD",  //
                               "HHLLLLSSDD",  //
                               "HHLLLLSSDD",  //
                               "HHLL..SSDD",  //
                               "HHSSSSSSDD",  //
                               "HHSSSSSSDD",  //
                               "DDDDDDDDDD",  //
                               "DDDDDDDDDD"}},
                    // The inner edge meets itself, nothing reaches beyond the item.
                    BevelCase{"Tiny", 100, false, {"HHD", "HSD", "DDD"}}),
    probe::CaseName());

}  // namespace
