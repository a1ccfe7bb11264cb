// Push buttons, radio buttons and owner-drawn buttons.
#include <algorithm>

#include "platform/ui/art.h"
#include "platform/ui/desk.h"

namespace ui {
namespace {

constexpr COLORREF kFace = RGB(0xFD, 0xFD, 0xFD);
constexpr COLORREF kEdge = RGB(0xB4, 0xB4, 0xB4);
constexpr COLORREF kDisabledFace = RGB(0xF2, 0xF2, 0xF2);
constexpr COLORREF kDisabledEdge = RGB(0xD0, 0xD0, 0xD0);
constexpr COLORREF kRadioEdge = RGB(0x70, 0x70, 0x70);

COLORREF Accent() { return GetSysColor(COLOR_HIGHLIGHT); }

DWORD TypeOf(const Window& button) { return button.style & BS_TYPEMASK; }

bool IsRadio(const Window& button) {
  return TypeOf(button) == BS_RADIOBUTTON || TypeOf(button) == BS_AUTORADIOBUTTON;
}

bool IsPush(const Window& button) {
  return TypeOf(button) == BS_PUSHBUTTON || TypeOf(button) == BS_DEFPUSHBUTTON;
}

bool Hot(const Window& button) { return (button.buttonState & BST_HOT) != 0; }
bool Focused(const Window& button) { return TheDesk().focus == button.Self(); }
bool FocusShown(const Window& button) { return Focused(button) && TheDesk().focusVisible; }

// Enter presses the button with the focus, or the dialog's default button.
bool EnterPresses(const Window& button) {
  const HWND focus = TheDesk().focus;
  if (!IsPush(button) || !button.Enabled()) return false;
  const WindowRef focused = WindowOf(focus);
  if (focused && focused->parent == button.parent &&
      (SendMessageA(focus, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON))) {
    return focus == button.Self();
  }
  const LRESULT defaultId = SendMessageA(button.parent, DM_GETDEFID, 0, 0);
  return HIWORD(defaultId) == DC_HASDEFID && LOWORD(defaultId) == static_cast<WORD>(button.id);
}

void SetState(Window& button, UINT state) {
  if (button.buttonState == state) return;
  button.buttonState = state;
  InvalidateRect(button.Self(), nullptr, TRUE);
}

void SetPushed(Window& button, bool pushed) {
  SetState(button, pushed ? button.buttonState | BST_PUSHED : button.buttonState & ~BST_PUSHED);
}

// The Tab key stops at the checked radio button of a group.
void SetCheck(Window& button, bool checked) {
  SetState(button, checked ? button.buttonState | BST_CHECKED : button.buttonState & ~BST_CHECKED);
  if (IsRadio(button)) {
    button.style = checked ? button.style | WS_TABSTOP : button.style & ~WS_TABSTOP;
  }
}

// Siblings from the group's first control (WS_GROUP) up to the next group.
std::vector<WindowRef> GroupOf(const Window& control) {
  std::vector<WindowRef> group;
  const WindowRef parent = WindowOf(control.parent);
  if (!parent) return group;
  bool found = false;
  for (HWND each : parent->children) {
    const WindowRef sibling = WindowOf(each);
    if (!sibling) continue;
    if ((sibling->style & WS_GROUP) != 0) {
      if (found) break;
      group.clear();
    }
    found = found || sibling.get() == &control;
    group.push_back(sibling);
  }
  return group;
}

void Click(const WindowRef& button) {
  if (!TakesInput(button->Self())) return;
  if (TypeOf(*button) == BS_AUTORADIOBUTTON) {
    for (const WindowRef& each : GroupOf(*button)) {
      if (each != button && each->procedure == ButtonProcedure && IsRadio(*each)) {
        SetCheck(*each, false);
      }
    }
    SetCheck(*button, true);
  }
  SendMessageA(button->parent, WM_COMMAND, MAKEWPARAM(button->id, BN_CLICKED),
               reinterpret_cast<LPARAM>(button->Self()));
}

HBRUSH AskForBrush(const Window& button, UINT message, HDC hdc) {
  return reinterpret_cast<HBRUSH>(SendMessageA(button.parent, message,
                                               reinterpret_cast<WPARAM>(hdc),
                                               reinterpret_cast<LPARAM>(button.Self())));
}

void PaintOwnerDrawn(const Window& button, HDC hdc) {
  const RECT client = button.Client();
  if (const HBRUSH brush = AskForBrush(button, WM_CTLCOLORBTN, hdc)) {
    FillRect(hdc, &client, brush);
  }
  DRAWITEMSTRUCT item{};
  item.CtlType = ODT_BUTTON;
  item.CtlID = static_cast<UINT>(button.id);
  item.itemAction = ODA_DRAWENTIRE;
  if ((button.buttonState & BST_PUSHED) != 0) item.itemState |= ODS_SELECTED;
  if (!button.Enabled()) item.itemState |= ODS_DISABLED;
  if (Focused(button)) item.itemState |= ODS_FOCUS;
  item.hwndItem = button.Self();
  item.hDC = hdc;
  item.rcItem = client;
  SendMessageA(button.parent, WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

// A frame of two colours, which shows on any face.
void PaintFocusFrame(const Window& button, HDC hdc) {
  const int width = Scaled(1);
  RECT frame = button.Client();
  for (const COLORREF color : {RGB(0xFF, 0xFF, 0xFF), RGB(0, 0, 0)}) {
    frame = {frame.left + 2 * width, frame.top + 2 * width, frame.right - 2 * width,
             frame.bottom - 2 * width};
    if (IsRectEmpty(frame)) return;
    const HBRUSH brush = CreateSolidBrush(color);
    const RECT sides[] = {{frame.left, frame.top, frame.right, frame.top + width},
                          {frame.left, frame.bottom - width, frame.right, frame.bottom},
                          {frame.left, frame.top, frame.left + width, frame.bottom},
                          {frame.right - width, frame.top, frame.right, frame.bottom}};
    for (const RECT& side : sides) FillRect(hdc, &side, brush);
    DeleteObject(brush);
    frame = {frame.left - width, frame.top - width, frame.right + width, frame.bottom + width};
  }
}

// What the parent shows under the button's corner, for its round corners.
COLORREF ColorBehind(const Window& button) {
  const WindowRef parent = WindowOf(button.parent);
  const LONG x = button.place.left, y = button.place.top;
  if (!parent || !parent->surface || x < 0 || x >= parent->surface->Width() || y < 0 ||
      y >= parent->surface->Height()) {
    return GetSysColor(COLOR_3DFACE);
  }
  return parent->surface->Pixel(x, y);
}

void PaintPush(const Window& button, HDC hdc) {
  const bool main = EnterPresses(button);
  BoxLook look{ColorBehind(button), kEdge, kFace, Scaled(4), Scaled(1)};
  if (!button.Enabled()) {
    look.edge = kDisabledEdge;
    look.face = kDisabledFace;
  } else if ((button.buttonState & BST_PUSHED) != 0) {
    look.edge = Accent();
    look.face = Mix(kFace, Accent(), 56);
  } else if (Hot(button)) {
    look.edge = Mix(kEdge, Accent(), 192);
    look.face = Mix(kFace, Accent(), 24);
  } else if (main) {
    look.edge = Accent();
  }
  if (FocusShown(button)) {
    look.edge = Accent();
    look.border = Scaled(2);
  }
  DrawBox(hdc, button.Client(), look);
  SetTextColor(hdc, GetSysColor(button.Enabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
  DrawLine(hdc, button.Client(), button.text, TA_CENTER);
}

void PaintRadio(const Window& button, HDC hdc) {
  const RECT client = button.Client();
  const COLORREF around = GetSysColor(COLOR_3DFACE);
  if (const HBRUSH brush = AskForBrush(button, WM_CTLCOLORSTATIC, hdc)) {
    FillRect(hdc, &client, brush);
  }
  const int size = Scaled(14);
  const int top = (client.bottom - size) / 2, left = Scaled(2);
  const RECT disc{left, top, left + size, top + size};
  const bool checked = (button.buttonState & BST_CHECKED) != 0;
  const COLORREF ink = button.Enabled() ? Accent() : GetSysColor(COLOR_GRAYTEXT);
  BoxLook look{around, kRadioEdge, RGB(0xFF, 0xFF, 0xFF), size / 2, Scaled(1)};
  if (checked) {
    look.edge = ink;
    look.border = Scaled(4);
  } else if (Hot(button)) {
    look.edge = ink;
  }
  if ((button.buttonState & BST_PUSHED) != 0) look.face = Mix(look.face, ink, 56);
  DrawBox(hdc, disc, look);
  SetTextColor(hdc, GetSysColor(button.Enabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
  const RECT textBox{disc.right + Scaled(7), client.top, client.right, client.bottom};
  DrawLine(hdc, textBox, button.text, TA_LEFT);
  if (!FocusShown(button)) return;
  SIZE extent{0, 0};
  GetTextExtentPoint32A(hdc, button.text.data(), static_cast<int>(button.text.size()), &extent);
  const LONG y = (client.bottom + extent.cy) / 2;
  const RECT underline{textBox.left, y, textBox.left + extent.cx, y + Scaled(2)};
  const HBRUSH brush = CreateSolidBrush(ink);
  FillRect(hdc, &underline, brush);
  DeleteObject(brush);
}

void Paint(const WindowRef& button) {
  PAINTSTRUCT paint;
  const HDC hdc = BeginPaint(button->Self(), &paint);
  {
    const FontScope font(hdc, button->font);
    if (TypeOf(*button) == BS_OWNERDRAW) {
      PaintOwnerDrawn(*button, hdc);
      if (FocusShown(*button)) PaintFocusFrame(*button, hdc);
    } else if (IsRadio(*button)) {
      PaintRadio(*button, hdc);
    } else {
      PaintPush(*button, hdc);
    }
  }
  EndPaint(button->Self(), &paint);
}

void Released(const WindowRef& button) {
  const bool pushed = (button->buttonState & BST_PUSHED) != 0;
  SetPushed(*button, false);
  if (GetCapture() == button->Self()) ReleaseCapture();
  if (pushed) Click(button);
}

LRESULT DialogCode(const Window& button) {
  if (IsRadio(button)) return DLGC_BUTTON | DLGC_RADIOBUTTON;
  if (!IsPush(button)) return DLGC_BUTTON;
  return DLGC_BUTTON |
         (TypeOf(button) == BS_DEFPUSHBUTTON ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
}

// Other buttons lose or get the look of the one that Enter presses.
void RepaintPushButtons(const Window& button) {
  const WindowRef parent = WindowOf(button.parent);
  if (!parent) return;
  for (HWND each : parent->children) {
    const WindowRef sibling = WindowOf(each);
    if (sibling && sibling->procedure == ButtonProcedure && IsPush(*sibling)) {
      InvalidateRect(each, nullptr, TRUE);
    }
  }
  InvalidateRect(button.Self(), nullptr, TRUE);
}

}  // namespace

LRESULT ButtonProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const WindowRef button = WindowOf(window);
  if (!button) return 0;
  const POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  switch (message) {
    case WM_PAINT:
      Paint(button);
      return 0;
    case WM_ERASEBKGND:
      return TRUE;  // all is painted at once
    case WM_GETDLGCODE:
      return DialogCode(*button);
    case WM_LBUTTONDOWN:
      SetFocus(window);
      SetCapture(window);
      SetPushed(*button, true);
      return 0;
    case WM_MOUSEMOVE:
      if (GetCapture() == window) SetPushed(*button, PtInRect(button->Client(), at));
      if (TheDesk().under == window) SetState(*button, button->buttonState | BST_HOT);
      return 0;
    case WM_LBUTTONUP:
      if (GetCapture() == window) Released(button);
      return 0;
    case WM_CAPTURECHANGED:
      SetPushed(*button, false);
      return 0;
    case WM_KEYDOWN:
      if (wParam == VK_SPACE) SetPushed(*button, true);
      return 0;
    case WM_KEYUP:
      if (wParam == VK_SPACE) Released(button);
      return 0;
    case WM_MOUSELEAVE:
      SetState(*button, button->buttonState & ~BST_HOT);
      return 0;
    case WM_ENABLE:
      InvalidateRect(window, nullptr, TRUE);
      return 0;
    case WM_KILLFOCUS:
      SetPushed(*button, false);
      [[fallthrough]];
    case WM_SETFOCUS:
      RepaintPushButtons(*button);
      return 0;
    case BM_CLICK:
      Click(button);
      return 0;
    case BM_GETCHECK:
      return (button->buttonState & BST_CHECKED) != 0;
    case BM_SETCHECK:
      SetCheck(*button, wParam == BST_CHECKED);
      return 0;
    case BM_GETSTATE:
      return static_cast<LRESULT>(button->buttonState | (Focused(*button) ? BST_FOCUS : 0));
    case BM_SETSTATE:
      SetPushed(*button, wParam != 0);
      return 0;
    default:
      return DefWindowProcA(window, message, wParam, lParam);
  }
}

}  // namespace ui
