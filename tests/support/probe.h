// Windows that write down what they get.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/gfx/context.h"
#include "platform/ui/headless.h"
#include "platform/ui/resources.h"
#include "tests/support/case_name.h"

namespace probe {

using ::CaseName;

using Handler = std::function<std::optional<LRESULT>(HWND, UINT, WPARAM, LPARAM)>;

inline std::vector<std::string>& Log() {
  static std::vector<std::string> log;
  return log;
}

inline std::map<HWND, std::string>& Names() {
  static std::map<HWND, std::string> names;
  return names;
}

// Answers before the default procedure, for all probes.
inline Handler& Answer() {
  static Handler handler;
  return handler;
}

inline const char* NameOf(UINT message) {
  static const std::map<UINT, const char*> names = {{WM_CREATE, "create"},
                                                    {WM_DESTROY, "destroy"},
                                                    {WM_NCDESTROY, "gone"},
                                                    {WM_PAINT, "paint"},
                                                    {WM_ERASEBKGND, "erase"},
                                                    {WM_TIMER, "timer"},
                                                    {WM_SIZE, "size"},
                                                    {WM_MOVE, "move"},
                                                    {WM_LBUTTONDOWN, "down"},
                                                    {WM_LBUTTONUP, "up"},
                                                    {WM_MOUSEMOVE, "mouse"},
                                                    {WM_MOUSELEAVE, "leave"},
                                                    {WM_CAPTURECHANGED, "uncapt"},
                                                    {WM_SETFOCUS, "focus"},
                                                    {WM_KILLFOCUS, "unfocus"},
                                                    {WM_KEYDOWN, "key"},
                                                    {WM_COMMAND, "command"},
                                                    {WM_APP, "app"}};
  const auto found = names.find(message);
  return found != names.end() ? found->second : nullptr;
}

inline LRESULT Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    Names()[window] = reinterpret_cast<const CREATESTRUCTA*>(lParam)->lpszName;
  }
  if (const char* name = NameOf(message)) Log().push_back(Names()[window] + ":" + name);
  if (Answer()) {
    if (const auto result = Answer()(window, message, wParam, lParam)) return *result;
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

// A class "probe" of windows, a front with its virtual clock, and the check that a test leaves no
// drawing object behind.
class Fixture : public testing::Test {
 protected:
  Fixture() {
    WNDCLASSA probeClass{};
    probeClass.lpfnWndProc = Procedure;
    probeClass.lpszClassName = "probe";
    probeClass.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    RegisterClassA(&probeClass);
    objects_ = gfx::LiveObjects();
  }
  void TearDown() override {
    Answer() = nullptr;
    for (HWND top : ui::TopLevelWindows()) DestroyWindow(top);
    EXPECT_EQ(ui::LiveWindows(), 0u);
    EXPECT_EQ(gfx::LiveObjects(), objects_);
    ui::SetScale(100);
    Log().clear();
  }

  static HWND Top(const char* name, int width = 200, int height = 100) {
    return Make(name, WS_POPUP | WS_VISIBLE, {0, 0, width, height}, nullptr);
  }
  static HWND Child(const char* name, HWND parent, RECT place, int id = 0) {
    return Make(name, WS_CHILD | WS_VISIBLE, place, parent, id);
  }
  static HWND Make(const char* name, DWORD style, RECT place, HWND parent, int id = 0) {
    return CreateWindowExA(0, "probe", name, style, place.left, place.top, place.right - place.left,
                           place.bottom - place.top, parent,
                           reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(id)), nullptr, nullptr);
  }

  // What came since the last call, as one text; only of the messages in `of` where given.
  static std::string Got(const std::string& of = "") {
    std::string got;
    for (const std::string& entry : Log()) {
      const std::string message = entry.substr(entry.find(':') + 1);
      if (!of.empty() && (" " + of + " ").find(" " + message + " ") == std::string::npos) continue;
      got += (got.empty() ? "" : " ") + entry;
    }
    Log().clear();
    return got;
  }

  ui::Headless desk;

 private:
  std::size_t objects_;
};

}  // namespace probe
