// Dialogs: made from templates, run, ended; their controls and default answers.
#include <algorithm>

#include "platform/gfx/context.h"
#include "platform/ui/desk.h"

namespace ui {
namespace {

constexpr const char* kDialogClass = "ui dialog";

// Pixels per unit of a template, as a fraction for each direction.
struct UnitScale {
  int xNumerator, xDenominator, yNumerator, yDenominator;

  int X(int length) const { return Rounded(length, xNumerator, xDenominator); }
  int Y(int length) const { return Rounded(length, yNumerator, yDenominator); }

 private:
  // Half up; templates hold no lengths that overflow 64 bits.
  static int Rounded(int length, int numerator, int denominator) {
    const std::int64_t product = std::int64_t{length} * numerator;
    return static_cast<int>((2 * product + denominator) / (2 * denominator));
  }
};

HFONT MakeFont(const DialogTemplate& form) {
  LOGFONTA font{};
  font.lfHeight = -Scaled(std::max(1, form.fontHeight));
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfQuality = ANTIALIASED_QUALITY;
  const std::string_view face = form.fontFace != nullptr ? form.fontFace : "";
  std::copy_n(face.begin(), std::min<std::size_t>(face.size(), LF_FACESIZE - 1), font.lfFaceName);
  return CreateFontIndirectA(&font);
}

UnitScale ScaleOf(const DialogTemplate& form, HFONT font) {
  if (form.units == Units::kPixels) return {Scale(), 100, Scale(), 100};
  // A surface of one pixel serves to measure with the fonts of windows.
  gfx::Surface surface(1, 1);
  const HDC hdc = gfx::CreateRasterContext(surface, WindowText());
  SelectObject(hdc, font);
  TEXTMETRICA metrics{};
  GetTextMetricsA(hdc, &metrics);
  DeleteDC(hdc);
  return {std::max<int>(1, metrics.tmAveCharWidth), 4, std::max<int>(1, metrics.tmHeight), 8};
}

struct Birth {
  std::shared_ptr<const DialogTemplate> form;
  HFONT font;
  WNDPROC procedure;
  void* parameter;
};

// The class's procedure while the window is being made: it moves in what the template gives and
// hands over to the dialog's own procedure.
LRESULT BirthProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_NCCREATE) return DefDlgProcA(window, message, wParam, lParam);
  auto* create = reinterpret_cast<CREATESTRUCTA*>(lParam);
  auto* birth = static_cast<Birth*>(create->lpCreateParams);
  const WindowRef dialog = WindowOf(window);
  dialog->dialog = std::make_unique<DialogState>();
  dialog->dialog->form = birth->form;
  dialog->dialog->font = birth->font;
  dialog->font = birth->font;
  dialog->procedure = birth->procedure;
  create->lpCreateParams = birth->parameter;
  return SendMessageA(window, message, wParam, lParam);
}

const char* BirthClass() {
  static const bool registered = [] {
    WNDCLASSA dialog{};
    dialog.lpfnWndProc = BirthProcedure;
    dialog.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    dialog.lpszClassName = kDialogClass;
    return RegisterClassA(&dialog) != 0;
  }();
  return registered ? kDialogClass : nullptr;
}

void MakeControls(HWND window, const DialogTemplate& form, const UnitScale& scale, HFONT font) {
  for (const ControlTemplate& control : form.controls) {
    const int left = scale.X(control.x), top = scale.Y(control.y);
    const DWORD style = (control.style & ~WS_POPUP) | WS_CHILD | (control.hidden ? 0 : WS_VISIBLE);
    const HWND made = CreateWindowExA(
        0, control.className, control.text, style, left, top,
        scale.X(control.x + control.width) - left, scale.Y(control.y + control.height) - top,
        window, reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(control.id)), nullptr, nullptr);
    SendMessageA(made, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    const WindowRef button = WindowOf(made);
    const WindowRef dialog = WindowOf(window);
    if (!dialog) return;
    if (button && button->procedure == ButtonProcedure &&
        (button->style & BS_TYPEMASK) == BS_DEFPUSHBUTTON) {
      dialog->dialog->defaultId = control.id;
    }
  }
}

void EraseDialog(HWND dialog, HDC hdc) {
  const auto brush = reinterpret_cast<HBRUSH>(SendMessageA(
      dialog, WM_CTLCOLORDLG, reinterpret_cast<WPARAM>(hdc), reinterpret_cast<LPARAM>(dialog)));
  RECT client{};
  GetClientRect(dialog, &client);
  if (brush != nullptr) FillRect(hdc, &client, brush);
}

void Unblock(DialogState& state, HWND owner) {
  if (!state.blocksOwner) return;
  state.blocksOwner = false;
  if (const WindowRef window = WindowOf(owner)) --window->blockers;
}

}  // namespace

HWND CreateDialogWindow(HMODULE module, const char* name, HWND owner, WNDPROC procedure,
                        void* parameter) {
  const auto form = ShareDialog(module, name);
  if (!form || procedure == nullptr || BirthClass() == nullptr) return nullptr;
  const HFONT font = MakeFont(*form);
  const UnitScale scale = ScaleOf(*form, font);
  Birth birth{form, font, procedure, parameter};
  const HWND window = CreateWindowExA(
      0, BirthClass(), form->caption.c_str(), form->style & ~(WS_CHILD | WS_VISIBLE), CW_USEDEFAULT,
      CW_USEDEFAULT, scale.X(form->width), scale.Y(form->height), owner, nullptr, module, &birth);
  if (window == nullptr) {
    // Deleted with the window where it got that far; then this is refused.
    DeleteObject(font);
    return nullptr;
  }
  MakeControls(window, *form, scale, font);
  SendMessageA(window, WM_INITDIALOG, 0, reinterpret_cast<LPARAM>(parameter));
  return IsWindow(window) ? window : nullptr;
}

const DialogTemplate* TemplateOf(HWND dialog) {
  const WindowRef window = WindowOf(dialog);
  return window && window->dialog ? window->dialog->form.get() : nullptr;
}

SIZE TemplateToPixels(HWND dialog, SIZE extent) {
  const WindowRef window = WindowOf(dialog);
  if (!window || !window->dialog) return {0, 0};
  const UnitScale scale = ScaleOf(*window->dialog->form, window->dialog->font);
  return {scale.X(extent.cx), scale.Y(extent.cy)};
}

bool RunDialog(HWND dialog, std::function<void(LONG_PTR)> done, bool blockOwner) {
  const WindowRef window = WindowOf(dialog);
  if (!window || !window->dialog || window->ending) return false;
  DialogState& state = *window->dialog;
  if (state.running) return false;
  state.running = true;
  state.done = std::move(done);
  // Ended while it was set up: the end is on its way.
  if (state.ended) return true;
  if (const WindowRef owner = WindowOf(window->parent); owner && blockOwner) {
    state.blocksOwner = true;
    ++owner->blockers;
    Forsake(owner->Self());
  }
  ShowWindow(dialog, SW_SHOW);
  return true;
}

LONG_PTR RunModalDialog(HWND dialog) {
  bool ended = false;
  LONG_PTR result = IDCANCEL;
  const auto done = [&](LONG_PTR value) {
    ended = true;
    result = value;
  };
  if (!RunDialog(dialog, done, true)) return result;
  if (!RunUntil([&] { return ended; })) DestroyWindow(dialog);
  return result;
}

// Called for every window that ends, so also for dialogs that nobody ran and for other windows.
void FinishDialog(Window& window, LONG_PTR result) {
  if (!window.dialog) return;
  DialogState& state = *window.dialog;
  if (!state.ended) state.result = result;
  state.ended = true;
  Unblock(state, window.parent);
  if (!std::exchange(state.running, false)) return;
  const auto done = std::exchange(state.done, nullptr);
  if (done) done(state.result);
}

bool EndNextDialog() {
  Desk& desk = TheDesk();
  if (desk.endedDialogs.empty()) return false;
  const HWND dialog = desk.endedDialogs.front();
  desk.endedDialogs.erase(desk.endedDialogs.begin());
  if (const WindowRef window = WindowOf(dialog)) {
    FinishDialog(*window, IDCANCEL);
    DestroyWindow(dialog);
  }
  return true;
}

}  // namespace ui

using ui::WindowOf;
using ui::WindowRef;

BOOL EndDialog(HWND dialog, LONG_PTR result) {
  const WindowRef window = WindowOf(dialog);
  if (!window || !window->dialog || window->ending) return FALSE;
  ui::DialogState& state = *window->dialog;
  if (state.ended) return TRUE;
  state.ended = true;
  state.result = result;
  ui::TheDesk().endedDialogs.push_back(dialog);
  ui::Unblock(state, window->parent);
  ShowWindow(dialog, SW_HIDE);
  return TRUE;
}

LRESULT DefDlgProcA(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  const WindowRef window = WindowOf(dialog);
  if (!window) return 0;
  switch (message) {
    case WM_ERASEBKGND:
      ui::EraseDialog(dialog, reinterpret_cast<HDC>(wParam));
      return TRUE;
    case WM_CLOSE:
      SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                   reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDCANCEL)));
      return 0;
    case DM_GETDEFID:
      return window->dialog
                 ? static_cast<LRESULT>(MAKEWPARAM(window->dialog->defaultId, DC_HASDEFID))
                 : 0;
    case DM_SETDEFID:
      if (window->dialog) window->dialog->defaultId = static_cast<int>(wParam);
      return TRUE;
    default:
      return DefWindowProcA(dialog, message, wParam, lParam);
  }
}

HWND GetDlgItem(HWND dialog, int id) {
  const WindowRef window = WindowOf(dialog);
  if (!window) return nullptr;
  for (HWND each : window->children) {
    const WindowRef child = WindowOf(each);
    if (child && child->id == id) return each;
  }
  return nullptr;
}

int GetDlgCtrlID(HWND control) {
  const WindowRef window = WindowOf(control);
  return window ? window->id : 0;
}

BOOL CheckDlgButton(HWND dialog, int id, UINT check) {
  const HWND button = GetDlgItem(dialog, id);
  if (button == nullptr) return FALSE;
  SendMessageA(button, BM_SETCHECK, check, 0);
  return TRUE;
}

BOOL CheckRadioButton(HWND dialog, int first, int last, int checked) {
  const WindowRef window = WindowOf(dialog);
  if (!window) return FALSE;
  const std::vector<HWND> children = window->children;
  for (HWND each : children) {
    const int id = GetDlgCtrlID(each);
    if (id < first || id > last) continue;
    SendMessageA(each, BM_SETCHECK, id == checked ? BST_CHECKED : BST_UNCHECKED, 0);
  }
  return TRUE;
}

UINT IsDlgButtonChecked(HWND dialog, int id) {
  return static_cast<UINT>(SendMessageA(GetDlgItem(dialog, id), BM_GETCHECK, 0, 0));
}

BOOL SetDlgItemTextA(HWND dialog, int id, const char* text) {
  return SetWindowTextA(GetDlgItem(dialog, id), text);
}
