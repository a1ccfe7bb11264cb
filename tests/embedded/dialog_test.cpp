// Life of dialog objects, their results, missing resources.
#include "elugraph/host/controls.h"
#include "embedded/controls/host_module.h"
#include "tests/support/probe.h"

namespace {

int alive = 0;

class Plain : public TORVDlg {
 public:
  explicit Plain(HWND parent, HWND* place = nullptr, unsigned form = embedded::kPathEditorDialog)
      : TORVDlg(parent, ResIdCheck(form, embedded::HostModule(), RT_DIALOG), place,
                ResId(0u, nullptr)) {
    ++alive;
  }
  ~Plain() override { --alive; }
  void SetupWindow() override {
    log += " setup";
    EXPECT_NE(GetDlgItem(hwnd, IDOK), nullptr);
    TORVDlg::SetupWindow();
  }
  bool CanClose() override {
    log += " ask";
    return agrees && TORVDlg::CanClose();
  }
  bool ApplyData() override {
    log += " apply";
    return true;
  }
  LRESULT EvCommand(UINT id, HWND control, UINT notification) override {
    if (id == 99) DestroyWindow(hwnd);
    return TORVDlg::EvCommand(id, control, notification);
  }

  std::string log;
  bool agrees = true;
};

struct Ended {
  static void Callback(int result, void* context) {
    auto* self = static_cast<Ended*>(context);
    self->results.push_back(result);
    self->aliveThen = alive;
  }
  std::vector<int> results;
  int aliveThen = -1;
};

class HostDialogs : public probe::Fixture {
 protected:
  HostDialogs() { alive = 0; }
};

struct EndCase {
  const char* name;
  std::function<void(ui::Headless&, HWND)> end;
  const char* log;  // without the first " setup"
  int result;       // 0: still open
  bool agrees = true;
};

class DialogEnds : public HostDialogs, public testing::WithParamInterface<EndCase> {};

TEST_P(DialogEnds, ReportOnceAndThenEndTheObject) {
  const EndCase& c = GetParam();
  const HWND parent = Top("parent");
  HWND place = reinterpret_cast<HWND>(1);
  auto* dialog = new Plain(parent, &place);
  EXPECT_EQ(place, nullptr);
  const HWND window = dialog->Create(-1);
  EXPECT_EQ(place, window);
  EXPECT_FALSE(IsWindowVisible(window));
  dialog->agrees = c.agrees;
  std::string log;
  dialog->_AddRef();  // to read its log later
  Ended ended;
  EXPECT_EQ(PostExecute(window, Ended::Callback, &ended, true), window);
  EXPECT_TRUE(IsWindowVisible(window));
  EXPECT_FALSE(IsWindowEnabled(parent));
  c.end(desk, window);
  desk.RunUntilIdle();
  EXPECT_EQ(dialog->log, std::string(" setup") + c.log);
  const bool open = c.result == 0;
  EXPECT_EQ(dialog->_Release(), open ? 1 : 0);
  EXPECT_EQ(ended.results, open ? std::vector<int>{} : std::vector<int>{c.result});
  EXPECT_EQ(IsWindow(window), open);
  EXPECT_EQ(place, open ? window : nullptr);
  EXPECT_EQ(alive, open ? 1 : 0);
  EXPECT_EQ(ended.aliveThen, open ? -1 : 1);
  EXPECT_EQ(IsWindowEnabled(parent), !open && IsWindow(parent));
  if (!open) return;
  DestroyWindow(window);
  EXPECT_EQ(ended.results, std::vector<int>{IDCANCEL});
  EXPECT_EQ(alive, 0);
}

const EndCase kAllDialogEnds[] = {
    {"Ok", [](auto& desk, HWND w) { desk.Click(GetDlgItem(w, IDOK)); }, " ask apply", IDOK},
    {"Refused", [](auto& desk, HWND w) { desk.Click(GetDlgItem(w, IDOK)); }, " ask", 0, false},
    {"CancelIsNotAsked", [](auto& desk, HWND w) { desk.Click(GetDlgItem(w, IDCANCEL)); }, "",
     IDCANCEL, false},
    {"Closed", [](auto& desk, HWND w) { desk.Close(w); }, "", IDCANCEL},
    {"EndsItselfInACommand", [](auto&, HWND w) { PostMessageA(w, WM_COMMAND, 99, 0); }, "",
     IDCANCEL},
    // A second answer on its way must not take the data twice.
    {"OkTwice",
     [](auto&, HWND w) {
       PostMessageA(w, WM_COMMAND, IDOK, 0);
       PostMessageA(w, WM_COMMAND, IDOK, 0);
       PostMessageA(w, WM_COMMAND, IDCANCEL, 0);
     },
     " ask apply", IDOK},
    {"ParentGone", [](auto&, HWND w) { DestroyWindow(GetParent(w)); }, "", IDCANCEL}};
INSTANTIATE_TEST_SUITE_P(All, DialogEnds, testing::ValuesIn(kAllDialogEnds), CaseName());

}  // namespace
