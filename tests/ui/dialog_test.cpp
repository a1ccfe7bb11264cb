// Dialogs from templates: layout, keys, buttons, running and ending.
#include "tests/support/probe.h"

namespace {

ui::DialogTemplate SmallForm() {
  ui::DialogTemplate form;
  form.caption = "Form";
  form.width = 200;
  form.height = 120;
  form.controls = {
      {"STATIC", "Label", 10, SS_LEFT, 10, 4, 80, 16},
      {"BUTTON", "Swatch", 20, BS_OWNERDRAW | WS_TABSTOP, 10, 20, 41, 21},
      {"BUTTON", "Linear", 31, BS_AUTORADIOBUTTON | WS_GROUP | WS_TABSTOP, 10, 50, 80, 20},
      {"BUTTON", "Logarithmic", 32, BS_AUTORADIOBUTTON, 100, 50, 80, 20},
      {"BUTTON", "OK", IDOK, BS_DEFPUSHBUTTON | WS_GROUP | WS_TABSTOP, 20, 90, 70, 24},
      {"BUTTON", "Cancel", IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, 110, 90, 70, 24},
      {"BUTTON", "Hidden", 40, BS_PUSHBUTTON | WS_TABSTOP, 0, 0, 5, 5, true}};
  return form;
}

class Dialogs : public probe::Fixture {
 protected:
  Dialogs() { ui::AddDialog(module, "FORM", SmallForm()); }

  HWND Open(HWND owner = nullptr, const char* name = "form") {
    dialog = ui::CreateDialogWindow(module, name, owner, Procedure, this);
    return dialog;
  }

  static LRESULT Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
      SetWindowLongPtrA(
          window, GWLP_USERDATA,
          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams));
    }
    auto* self = reinterpret_cast<Dialogs*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    return self->OnMessage(window, message, wParam, lParam);
  }

  virtual LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
      EXPECT_NE(GetDlgItem(window, IDCANCEL), nullptr);
      EXPECT_EQ(lParam, reinterpret_cast<LPARAM>(this));
    }
    if (message == WM_COMMAND) {
      commands += " " + std::to_string(LOWORD(wParam));
      EXPECT_EQ(reinterpret_cast<HWND>(lParam), GetDlgItem(window, LOWORD(wParam)));
      if (LOWORD(wParam) <= IDCANCEL) EndDialog(window, LOWORD(wParam));
    }
    return DefDlgProcA(window, message, wParam, lParam);
  }

  HMODULE module = ui::RegisterModule("dialog test");
  HWND dialog = nullptr;
  std::string commands;
};

struct KeyCase {
  const char* name;
  std::vector<std::pair<WORD, bool>> keys;  // key, with Shift
  int focus;                                // id afterwards; 0: the dialog has ended
  const char* commands;
};

class Keys : public Dialogs, public testing::WithParamInterface<KeyCase> {};

TEST_P(Keys, MoveTheFocusAndPressButtons) {
  const KeyCase& c = GetParam();
  ui::RunDialog(Open(), nullptr, false);
  CheckDlgButton(dialog, 31, BST_CHECKED);
  for (const auto& [key, shift] : c.keys) desk.Key(key, shift);
  EXPECT_EQ(commands, c.commands);
  EXPECT_EQ(GetDlgCtrlID(GetFocus()), c.focus);
  EXPECT_EQ(IsWindow(dialog), c.focus != 0);
}

const KeyCase kAllKeys[] = {
    {"FirstControl", {}, 20, ""},
    {"TabLeavesTheGroup", {{VK_TAB, false}, {VK_TAB, false}}, IDOK, ""},
    {"ArrowChecks", {{VK_TAB, false}, {VK_DOWN, false}}, 32, " 32"},
    {"ArrowRoundTheGroup", {{VK_TAB, false}, {VK_UP, false}, {VK_LEFT, false}}, 31, " 32 31"},
    {"EnterIsTheDefaultButton", {{VK_RETURN, false}}, 0, " 1"},
    {"SpaceOnAButton", {{VK_TAB, true}, {VK_SPACE, false}}, 0, " 2"},
    {"Escape", {{VK_ESCAPE, false}}, 0, " 2"}};
INSTANTIATE_TEST_SUITE_P(All, Keys, testing::ValuesIn(kAllKeys), CaseName());

TEST_F(Dialogs, MouseOnButtons) {
  ui::RunDialog(Open(), nullptr, false);
  const HWND ok = GetDlgItem(dialog, IDOK), log = GetDlgItem(dialog, 32);
  CheckDlgButton(dialog, 31, BST_CHECKED);
  desk.Click(log);
  EXPECT_EQ(IsDlgButtonChecked(dialog, 31), BST_UNCHECKED);
  EXPECT_EQ(IsDlgButtonChecked(dialog, 32), BST_CHECKED);
  // Released outside: no click; and it shows as pressed only while the mouse is inside.
  desk.Press(ok, 5, 5);
  EXPECT_EQ(SendMessageA(ok, BM_GETSTATE, 0, 0) & BST_PUSHED, BST_PUSHED);
  desk.MoveTo(ok, -20, 5);
  EXPECT_EQ(SendMessageA(ok, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
  desk.Release(ok, -20, 5);
  EXPECT_EQ(commands, " 32");
  EnableWindow(ok, FALSE);
  desk.Click(ok);
  desk.Key(VK_RETURN);
  SendMessageA(ok, BM_CLICK, 0, 0);
  EXPECT_EQ(commands, " 32");
  EXPECT_TRUE(IsWindow(dialog));
  desk.Close(dialog);
  EXPECT_EQ(commands, " 32 2") << "closing cancels";
  EXPECT_FALSE(IsWindow(dialog));
}

TEST_F(Dialogs, ResultsComeOnceAndTheOwnerWaits) {
  const HWND owner = Top("owner");
  const HWND focus = Child("focus", owner, {9, 9, 20, 20});
  SetFocus(focus);
  LONG_PTR result = 0;
  int calls = 0;
  const auto done = [&](LONG_PTR value) {
    result = value;
    ++calls;
    EXPECT_TRUE(IsWindow(dialog));
  };
  EXPECT_TRUE(ui::RunDialog(Open(owner), done, true));
  EXPECT_FALSE(ui::RunDialog(dialog, done, true));
  Got();
  desk.Click(owner, 3, 3);
  EXPECT_EQ(Got("down"), "");
  EXPECT_EQ(GetActiveWindow(), dialog);
  desk.Close(owner);
  EXPECT_TRUE(IsWindow(owner));
  // The first result counts, and what was on the way still arrives.
  EndDialog(dialog, 11);
  EndDialog(dialog, 12);
  EXPECT_EQ(calls, 0);
  EXPECT_FALSE(IsWindowVisible(dialog));
  EXPECT_EQ(GetActiveWindow(), owner);
  EXPECT_EQ(GetFocus(), focus);
  desk.RunUntilIdle();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(result, 11);
  EXPECT_FALSE(IsWindow(dialog));
}

TEST_F(Dialogs, ModalRunsEndByTheScriptOrWhenNothingCanHappen) {
  desk.Then([&] { desk.Key(VK_TAB); });
  desk.Then([&] { desk.Key(VK_RETURN); });
  EXPECT_EQ(ui::RunModalDialog(Open()), IDOK);
  EXPECT_EQ(desk.StepsLeft(), 0u);
  EXPECT_EQ(ui::RunModalDialog(Open()), IDCANCEL);
  // A timer that never ends the dialog does not keep it for ever.
  SetTimer(Open(), 1, 500, nullptr);
  EXPECT_EQ(ui::RunModalDialog(dialog), IDCANCEL);
  EXPECT_EQ(ui::LiveWindows(), 0u);
}

}  // namespace
