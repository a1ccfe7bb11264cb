// The host's dialogs as a user sees them: controls, space for their texts, the colour chooser.
#include <array>

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
  struct Control {
    int id;
    RECT place;
    std::string text;
    HWND handle;
  };

  std::vector<Control> ControlsOf(HWND dialog) {
    std::vector<Control> controls;
    const auto& templates = ui::TemplateOf(dialog)->controls;
    for (const ui::ControlTemplate& form : templates) {
      const int left = form.x * ui::Scale() / 100, top = form.y * ui::Scale() / 100;
      controls.push_back({form.id,
                          {left, top, left + form.width * ui::Scale() / 100,
                           top + form.height * ui::Scale() / 100},
                          form.text,
                          GetDlgItem(dialog, form.id)});
    }
    return controls;
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
  const std::vector<Control> controls = ControlsOf(dialog);
  ASSERT_FALSE(controls.empty());
  const HDC hdc = GetDC(dialog);
  SelectObject(hdc, reinterpret_cast<HGDIOBJ>(SendMessageA(dialog, WM_GETFONT, 0, 0)));
  for (const Control& control : controls) {
    const RECT& place = control.place;
    EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= client.right &&
                place.bottom <= client.bottom)
        << control.id;
    SIZE extent{0, 0};
    GetTextExtentPoint32A(hdc, control.text.data(), static_cast<int>(control.text.size()), &extent);
    const bool radio = control.id == 665 || control.id == 666;
    EXPECT_LE(extent.cx + (radio ? 24 * c.scale / 100 : 0), place.right - place.left)
        << control.text;
    EXPECT_LE(extent.cy, place.bottom - place.top) << control.text;
    for (const Control& other : controls) {
      const bool apart = &other == &control || other.place.left >= place.right ||
                         other.place.right <= place.left || other.place.top >= place.bottom ||
                         other.place.bottom <= place.top;
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

TEST_F(Chooser, ThePaletteHasNoColourTwice) {
  for (int row = 0; row < embedded::kPaletteRows; ++row) {
    for (int column = 0; column < embedded::kPaletteColumns; ++column) {
      EXPECT_EQ(embedded::PaletteIndex(embedded::PaletteColor(row, column)),
                row * embedded::kPaletteColumns + column);
    }
  }
  EXPECT_EQ(embedded::PaletteIndex(RGB(1, 2, 3)), -1);
}

}  // namespace
