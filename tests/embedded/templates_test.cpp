// The host's dialogs as a user sees them: controls, space for their texts, the colour chooser.
#include <set>

#include "elugraph/host/controls.h"
#include "embedded/controls/host_module.h"
#include "embedded/controls/palette.h"
#include "tests/support/probe.h"

namespace {

struct FormCase {
  const char* name;
  unsigned number;
  std::vector<int> ids;
  int scale;
  bool systemFonts;
};

class Forms : public probe::Fixture, public testing::WithParamInterface<FormCase> {
 protected:
  static RECT PlaceOf(const ui::ControlTemplate& control) {
    const int left = control.x * ui::Scale() / 100, top = control.y * ui::Scale() / 100;
    return {left, top, left + control.width * ui::Scale() / 100,
            top + control.height * ui::Scale() / 100};
  }
};

TEST_P(Forms, HoldTheirControlsWithRoomForTheTexts) {
  const FormCase& c = GetParam();
  ui::SetScale(c.scale);
  std::optional<ui::Headless> systemDesk;
  if (c.systemFonts) systemDesk.emplace(gfx::SystemText());
  const HWND dialog = ui::CreateDialogWindow(embedded::HostModule(), MAKEINTRESOURCEA(c.number),
                                             nullptr, DefDlgProcA, nullptr);
  ASSERT_NE(dialog, nullptr);
  for (const int id : c.ids) EXPECT_NE(GetDlgItem(dialog, id), nullptr) << id;
  RECT client;
  GetClientRect(dialog, &client);
  const auto& controls = ui::TemplateOf(dialog)->controls;
  ASSERT_FALSE(controls.empty());
  const HDC hdc = GetDC(dialog);
  SelectObject(hdc, reinterpret_cast<HGDIOBJ>(SendMessageA(dialog, WM_GETFONT, 0, 0)));
  for (const ui::ControlTemplate& control : controls) {
    const RECT place = PlaceOf(control);
    EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= client.right &&
                place.bottom <= client.bottom)
        << control.id;
    const std::string_view text = control.text;
    SIZE extent{0, 0};
    GetTextExtentPoint32A(hdc, text.data(), static_cast<int>(text.size()), &extent);
    const bool radio = control.id == 665 || control.id == 666;
    EXPECT_LE(extent.cx + (radio ? 24 * c.scale / 100 : 0), place.right - place.left)
        << control.text;
    EXPECT_LE(extent.cy, place.bottom - place.top) << control.text;
    for (const ui::ControlTemplate& other : controls) {
      const RECT beside = PlaceOf(other);
      const bool apart = &other == &control || beside.left >= place.right ||
                         beside.right <= place.left || beside.top >= place.bottom ||
                         beside.bottom <= place.top;
      EXPECT_TRUE(apart) << control.id << " lies over " << other.id;
    }
  }
  ReleaseDC(dialog, hdc);
  DestroyWindow(dialog);
}

std::vector<FormCase> AllForms() {
  std::vector<int> scaleIds = {1, 2, 662, 663, 664, 665, 666};
  for (int id = 670; id <= 679; ++id) scaleIds.push_back(id);
  std::vector<FormCase> cases;
  for (const int scale : {100, 200}) {
    for (const bool system : {false, true}) {
      cases.push_back({"ColorScale", embedded::kColorScaleDialog, scaleIds, scale, system});
      cases.push_back({"PathEditor", embedded::kPathEditorDialog, {1, 2}, scale, system});
      cases.push_back({"Map", embedded::kMapDialog, {652}, scale, system});
      cases.push_back({"Palette", embedded::kPaletteDialog, {1, 2, 700}, scale, system});
    }
  }
  return cases;
}

INSTANTIATE_TEST_SUITE_P(All, Forms, testing::ValuesIn(AllForms()), [](const auto& parameter) {
  return std::string(parameter.param.name) + std::to_string(parameter.param.scale) +
         (parameter.param.systemFonts ? "System" : "Builtin");
});

class Chooser : public probe::Fixture {
 protected:
  // Runs the chooser on `color` with one script step for each action.
  bool Choose(COLORREF& color, std::vector<std::function<void(HWND)>> actions) {
    for (auto& action : actions) {
      desk.Then([action] { action(GetActiveWindow()); });
    }
    const bool chosen = ChooseColorA(nullptr, &color, nullptr, nullptr, 0);
    EXPECT_EQ(desk.StepsLeft(), 0u);
    return chosen;
  }
  static std::function<void(HWND)> Keys(std::vector<WORD> keys) {
    return [keys](HWND) {
      for (const WORD key : keys) static_cast<ui::Headless*>(ui::CurrentFront())->Key(key);
    };
  }
  static void ClickColor(HWND dialog, int row, int column) {
    const HWND grid = GetDlgItem(dialog, embedded::kGridId);
    RECT client;
    GetClientRect(grid, &client);
    static_cast<ui::Headless*>(ui::CurrentFront())
        ->Click(grid, (2 * column + 1) * client.right / (2 * embedded::kPaletteColumns),
                (2 * row + 1) * client.bottom / (2 * embedded::kPaletteRows));
  }
};

TEST_F(Chooser, MouseAndKeysPick) {
  COLORREF color = RGB(1, 2, 3);
  EXPECT_TRUE(Choose(color, {[](HWND dialog) { ClickColor(dialog, 4, 6); }, Keys({VK_RETURN})}));
  EXPECT_EQ(color, RGB(0, 0, 255));
  // From the present colour two to the left and one row down, then with OK by Tab and Space.
  EXPECT_TRUE(Choose(color, {Keys({VK_LEFT, VK_LEFT, VK_DOWN}), Keys({VK_TAB, VK_SPACE})}));
  EXPECT_EQ(color, embedded::PaletteColor(5, 4));
  std::set<COLORREF> all;
  for (int i = 0; i < embedded::kPaletteRows * embedded::kPaletteColumns; ++i) {
    all.insert(
        embedded::PaletteColor(i / embedded::kPaletteColumns, i % embedded::kPaletteColumns));
  }
  EXPECT_EQ(all.size(), std::size_t{embedded::kPaletteRows * embedded::kPaletteColumns});
  // The edges hold.
  EXPECT_TRUE(Choose(
      color, {[](HWND dialog) { ClickColor(dialog, 0, 0); }, Keys({VK_LEFT, VK_UP, VK_RETURN})}));
  EXPECT_EQ(color, RGB(0, 0, 0));
}

TEST_F(Chooser, CancellingLeavesTheColour) {
  COLORREF color = RGB(1, 2, 3);
  EXPECT_FALSE(Choose(color, {[](HWND dialog) { ClickColor(dialog, 4, 6); }, Keys({VK_ESCAPE})}));
  EXPECT_EQ(color, RGB(1, 2, 3));
  EXPECT_FALSE(Choose(color, {}));  // nobody there
  EXPECT_TRUE(Choose(color, {Keys({VK_RETURN})}));
  EXPECT_EQ(color, RGB(1, 2, 3));
  EXPECT_FALSE(ChooseColorA(nullptr, nullptr, nullptr, nullptr, 0));
  EXPECT_FALSE(ChooseColorA(reinterpret_cast<HWND>(~UINT_PTR{0}), &color, nullptr, nullptr, 0));
}

}  // namespace
