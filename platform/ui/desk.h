// What the windows share: the table of windows, queues, timers, and who has focus and mouse. Only
// the sources of this folder include it.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/gfx/handle_table.h"
#include "platform/ui/front.h"
#include "platform/ui/resources.h"

namespace ui {

// Handles of windows and resources share the table of drawing objects; these are their kinds.
inline constexpr UINT kModuleKind = 11;
inline constexpr UINT kResourceKind = 12;
inline constexpr UINT kWindowKind = 13;
inline constexpr UINT kIconKind = 14;

struct WindowClass {
  std::string name;
  WNDPROC procedure = nullptr;
  HCURSOR cursor = nullptr;
  HBRUSH background = nullptr;
  bool mousePassesThrough = false;  // labels
};

// Of windows made from a template.
struct DialogState {
  std::shared_ptr<const DialogTemplate> form;
  HFONT font = nullptr;  // owned
  int defaultId = IDOK;
  bool running = false;
  bool ended = false;
  bool blocksOwner = false;
  LONG_PTR result = IDCANCEL;
  std::function<void(LONG_PTR)> done;
};

struct Window final : gfx::Object {
  static bool Is(UINT kind) { return kind == kWindowKind; }
  // Not one of the drawing objects that leak checks count.
  Window() : Object(kWindowKind, true) {}

  HWND Self() const { return static_cast<HWND>(Handle()); }
  bool IsTop() const { return (style & WS_CHILD) == 0; }
  bool Visible() const { return (style & WS_VISIBLE) != 0; }
  bool Enabled() const { return (style & WS_DISABLED) == 0 && blockers == 0; }
  LONG Width() const { return place.right - place.left; }
  LONG Height() const { return place.bottom - place.top; }
  RECT Client() const { return {0, 0, Width(), Height()}; }

  const WindowClass* windowClass = nullptr;
  WNDPROC procedure = nullptr;
  LONG_PTR userData = 0;
  DWORD style = 0;
  int id = 0;
  std::string text;
  HFONT font = nullptr;        // borrowed
  UINT buttonState = 0;        // of buttons: BST_ flags
  HWND parent = nullptr;       // of top-level windows: the owner
  std::vector<HWND> children;  // later ones lie above earlier ones
  std::vector<HWND> owned;
  RECT place{0, 0, 0, 0};  // in the parent's client area, or on the screen
  int blockers = 0;        // running dialogs that keep input away
  bool ending = false;

  RECT invalid{0, 0, 0, 0};  // empty: valid
  bool erase = false;
  bool paintTaken = false;                // the running WM_PAINT has been answered
  std::shared_ptr<gfx::Surface> surface;  // null until something is drawn

  std::unique_ptr<DialogState> dialog;

  // Top-level windows only.
  gfx::Surface shown;
  RECT dirty{0, 0, 0, 0};    // of `shown`
  HWND focusKept = nullptr;  // who had the focus when the window was last active
};

using WindowRef = std::shared_ptr<Window>;
inline WindowRef WindowOf(HWND window) { return gfx::Share<Window>(window); }

struct Timer {
  HWND window;
  UINT_PTR id;
  std::int64_t period;
  std::int64_t due;
  TIMERPROC callback;
};

struct Context {
  HWND window;
  std::shared_ptr<gfx::Surface> surface;  // outlives the window while the context is out
};

enum class InputKind {
  kMove,
  kButton,
  kWheel,
  kLeave,
  kKey,
  kCharacter,
  kSize,
  kPlace,
  kActivate,
  kClose
};

struct Input {
  InputKind kind;
  HWND top;
  POINT at{0, 0};  // also the extent of kSize
  int code = 0;    // button, key, character, wheel distance
  bool down = false;
};

struct Desk {
  Desk();

  Front* front = nullptr;
  std::map<std::string, std::unique_ptr<WindowClass>> classes;  // by lower-case name
  std::vector<HWND> tops;                                       // oldest first
  std::size_t windowCount = 0;

  std::deque<MSG> posted;
  std::deque<Input> input;
  std::vector<HWND> endedDialogs;
  std::vector<Timer> timers;
  UINT_PTR lastTimerId = 0;
  MessageFilter filter = nullptr;
  bool quit = false;
  int exitCode = 0;

  std::map<HDC, Context> contexts;

  HWND active = nullptr;
  HWND focus = nullptr;
  HWND capture = nullptr;
  HWND under = nullptr;     // the window the mouse is over
  POINT mouse{0, 0};        // on the screen
  WPARAM mouseButtons = 0;  // MK_ flags
  std::set<int> keysDown;
  bool focusVisible = false;  // the focus was last moved with the keyboard
  HCURSOR cursor = nullptr;

  int scale = 100;
};

// Made at the first use, never destroyed: static objects may use windows until the process ends.
Desk& TheDesk();

std::string LowerCase(std::string_view text);
std::int64_t Now();
gfx::TextEngine& WindowText();
// `length` (at least 0) pixels at 100 % in pixels of the layout scale, rounded half up.
int Scaled(int length);

RECT Intersection(const RECT& a, const RECT& b);  // all zero where they do not meet
// The rectangle around both; empty ones do not count.
RECT Enclosing(const RECT& a, const RECT& b);
RECT Moved(const RECT& rect, POINT by);

// ---- windows ----
void AddBuiltinClasses(Desk& desk);
HWND RootOf(HWND window);
// `window` is `ancestor` or lies inside it.
bool Within(HWND ancestor, HWND window);
POINT ScreenOrigin(const Window& window);
bool ShownOnScreen(const Window& window);
// The window and all its parents take input.
bool TakesInput(HWND window);
RECT LimitedPlace(int x, int y, int width, int height);
// Moves and resizes without telling the front.
void PlaceWindow(Window& window, RECT place, UINT flags);

// ---- focus, mouse ----
void Activate(HWND top);
// The user went to another program.
void Deactivate();
// Its owner, or the topmost window that takes input.
void ActivateAnother(HWND notThis);
// Takes focus, capture and hover away from a window and its children, with their messages.
void Forsake(HWND window);
// The window has had its last message.
void Forget(HWND window);
void SetUnder(HWND window);
void RefreshFocus();
void HandleInput(const Input& input);

// ---- messages ----
void DispatchQueued(const MSG& message);
LPARAM PositionParam(POINT at);

// ---- painting ----
void MarkShown(const Window& window, const RECT& part);
bool PaintNext();
bool PresentAll();

// ---- timers ----
bool FireTimer();

// ---- dialogs ----
void FinishDialog(Window& window, LONG_PTR result);
bool EndNextDialog();
bool IsDialogKey(const MSG& message);

// ---- resources ----
std::shared_ptr<const DialogTemplate> ShareDialog(HMODULE module, const char* name);

// ---- controls ----
LRESULT ButtonProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT LabelProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace ui
