// Windows: the functions and structures that dialogs and interactive plots call.
//
// Coordinates are device pixels, y down, right and bottom excluded. A window is all client area:
// the frame and caption of a top-level window belong to the desktop and are not counted, so the
// window rectangle is the client rectangle in screen coordinates. Windows with WS_CHILD lie inside
// their parent and are clipped to it; all others are top-level, and what was given as their parent
// is their owner, with which they end. A window is painted into a surface of its own: neither
// moving it nor what lies above it makes a repaint necessary, and parents never paint over
// children.
//
// A handle that is null, stale or of another kind is refused: the call answers null, 0 or FALSE and
// changes nothing. Extents are limited to 0 … 16384 pixels, positions to ±2^20; a window of more
// than 2^26 pixels shows nothing.
//
// All calls come from one thread. Texts are UTF-8.
#pragma once

#include "platform/gfx/gdi.h"
#include "platform/ui/messages.h"

using ATOM = WORD;
using LONG_PTR = std::intptr_t;
using WNDPROC = LRESULT (*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
using TIMERPROC = void (*)(HWND window, UINT message, UINT_PTR id, DWORD timeMs);

struct MSG {
  HWND hwnd;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  DWORD time;  // ms of the running clock
  POINT pt;    // mouse position on the screen
};

struct WNDCLASSA {
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra;  // no extra bytes are kept: use GWLP_USERDATA
  int cbWndExtra;
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor;       // null: the program sets cursors itself
  HBRUSH hbrBackground;  // null, a brush, or a COLOR_ index + 1
  const char* lpszMenuName;
  const char* lpszClassName;
};

struct CREATESTRUCTA {
  void* lpCreateParams;
  HINSTANCE hInstance;
  HANDLE hMenu;
  HWND hwndParent;
  int cy;
  int cx;
  int y;
  int x;
  LONG style;
  const char* lpszName;
  const char* lpszClass;
  DWORD dwExStyle;
};

struct PAINTSTRUCT {
  HDC hdc;
  BOOL fErase;   // the background is still to be painted
  RECT rcPaint;  // client coordinates
};

// `flags` tell what really changed: SWP_NOSIZE and SWP_NOMOVE are set where extent or position
// stayed the same. x and y count from the parent's client area, or from the screen.
struct WINDOWPOS {
  HWND hwnd;
  HWND hwndInsertAfter;
  int x;
  int y;
  int cx;
  int cy;
  UINT flags;
};

struct DRAWITEMSTRUCT {
  UINT CtlType;     // ODT_BUTTON
  UINT CtlID;       // control id
  UINT itemID;      // 0 for buttons
  UINT itemAction;  // ODA_DRAWENTIRE
  UINT itemState;   // ODS_ flags
  HWND hwndItem;
  HDC hDC;
  RECT rcItem;  // the control's client area
  UINT_PTR itemData;
};

// ---- windows ------------------------------------------------------------------------------------

// Class names are compared without regard to ASCII case. "BUTTON" and "STATIC" exist from the
// start. 0 for a name in use, no name or no procedure.
ATOM RegisterClassA(const WNDCLASSA* windowClass);
// `menu` is the control id of a child. CW_USEDEFAULT as position centres a top-level window over
// its owner, or on the screen. Messages: WM_NCCREATE, WM_CREATE; null where either refuses.
HWND CreateWindowExA(DWORD exStyle, const char* className, const char* text, DWORD style, int x,
                     int y, int width, int height, HWND parent, HANDLE menu, HINSTANCE instance,
                     void* parameter);
// Owned windows go first, then WM_DESTROY, the children, WM_NCDESTROY. Timers, posted messages and
// the capture of the window are dropped.
BOOL DestroyWindow(HWND window);
BOOL IsWindow(HWND window);
BOOL IsChild(HWND parent, HWND window);
// The parent of a child, the owner of a top-level window.
HWND GetParent(HWND window);

// The result tells whether the window was visible before.
BOOL ShowWindow(HWND window, int command);
// TRUE where the window and all its parents are shown.
BOOL IsWindowVisible(HWND window);
// TRUE where the window was disabled before. Disabled windows get no mouse or key input.
BOOL EnableWindow(HWND window, BOOL enable);
BOOL IsWindowEnabled(HWND window);

// Sends WM_WINDOWPOSCHANGED unless nothing changed; DefWindowProcA then sends WM_MOVE and WM_SIZE.
// A new extent makes the whole window invalid. The order of siblings is fixed; a top-level window
// given without SWP_NOZORDER is brought to the front.
BOOL SetWindowPos(HWND window, HWND insertAfter, int x, int y, int width, int height, UINT flags);
BOOL GetWindowRect(HWND window, RECT* rect);
BOOL GetClientRect(HWND window, RECT* rect);
BOOL ClientToScreen(HWND window, POINT* point);
BOOL ScreenToClient(HWND window, POINT* point);

BOOL SetWindowTextA(HWND window, const char* text);
// Copies at most size − 1 bytes and an end mark; returns the bytes copied.
int GetWindowTextA(HWND window, char* text, int size);
// GWL_STYLE, GWLP_WNDPROC, GWLP_ID, GWLP_USERDATA. Setting returns the value before.
LONG_PTR GetWindowLongPtrA(HWND window, int index);
LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value);

// ---- messages -----------------------------------------------------------------------------------

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Ends the running loops.
void PostQuitMessage(int exitCode);
LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// ---- painting -----------------------------------------------------------------------------------

// null rect: the whole window. Invalid parts are kept as one enclosing rectangle per window; once
// nothing else waits the window gets WM_PAINT, parents before children. A null window is refused.
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
// A null rect, or one that encloses the invalid part, makes all valid; smaller ones change nothing.
BOOL ValidateRect(HWND window, const RECT* rect);
// TRUE where a part is invalid; `rect` (may be null) gets it.
BOOL GetUpdateRect(HWND window, RECT* rect, BOOL erase);
// Sends WM_PAINT at once where the window is visible and a part of it invalid.
BOOL UpdateWindow(HWND window);
// Sends WM_ERASEBKGND where asked for, and gives a context clipped to the invalid part, which
// becomes valid.
HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);
// A context on the client area, clipped to it; null window: a reference context of the screen. It
// stays usable, drawing nowhere, when the window ends or gets another extent.
HDC GetDC(HWND window);
// 1 where the context was one of GetDC. The window may have ended meanwhile.
int ReleaseDC(HWND window, HDC hdc);
HWND WindowFromDC(HDC hdc);

// ---- timers -------------------------------------------------------------------------------------

// Restarts a timer of the same window and id. Periods are at least 10 ms. Without a window the id
// is chosen and returned. When due, `callback` is called, or without one WM_TIMER arrives; ticks
// that were missed meanwhile are not made up for. 0 on failure.
UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT periodMs, TIMERPROC callback);
BOOL KillTimer(HWND window, UINT_PTR id);
// The clock of timers and messages, in ms.
DWORD GetTickCount();

// ---- mouse, keyboard, focus
// -----------------------------------------------------------------------

// Return the window that had the capture.
HWND SetCapture(HWND window);
HWND GetCapture();
BOOL ReleaseCapture();
BOOL GetCursorPos(POINT* point);
// The high bit of the 16-bit result tells that the key is down, as input seen so far says.
std::int16_t GetKeyState(int key);
// Null takes the focus away. Return the window that had it.
HWND SetFocus(HWND window);
HWND GetFocus();
HWND GetActiveWindow();

// ---- cursors, icons, texts
// ------------------------------------------------------------------------

// A null module asks for the system's cursors (IDC_ names). The handle of a resource stays the same
// for the life of the process.
HCURSOR LoadCursorA(HINSTANCE module, const char* name);
// Null hides the cursor. Returns the cursor before.
HCURSOR SetCursor(HCURSOR cursor);
HCURSOR GetCursor();
HICON LoadIconA(HINSTANCE module, const char* name);
// Copies at most size − 1 bytes and an end mark; returns the bytes copied, 0 for an unknown number.
int LoadStringA(HINSTANCE module, UINT number, char* text, int size);
// `name` of RT_STRING resources is the text's own number.
HRSRC FindResourceA(HMODULE module, const char* name, const char* type);

// Screen extents in pixels; icons, cursors, edges and drag distances for the layout scale.
// 0 for an unknown index.
int GetSystemMetrics(int index);

// ---- dialogs
// --------------------------------------------------------------------------------------

// The child of that id; children of children are not searched.
HWND GetDlgItem(HWND dialog, int id);
int GetDlgCtrlID(HWND control);
BOOL CheckDlgButton(HWND dialog, int id, UINT check);
// Checks `checked` and unchecks the other controls of first … last.
BOOL CheckRadioButton(HWND dialog, int first, int last, int checked);
UINT IsDlgButtonChecked(HWND dialog, int id);
BOOL SetDlgItemTextA(HWND dialog, int id, const char* text);
// The next (previous) visible, enabled control with WS_TABSTOP, in the order of creation, round the
// end; a null control starts before the first. Null where there is none.
HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous);
// Ends a dialog that was run: it is hidden at once; its window ends, and whoever ran it gets the
// result, once the messages on the way are done. The first result counts.
BOOL EndDialog(HWND dialog, LONG_PTR result);
// What dialog windows do with a message they do not handle: background and control colours,
// WM_CLOSE as IDCANCEL, default button.
LRESULT DefDlgProcA(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
// Tab, Enter, Escape and arrow keys of a dialog and its controls. TRUE where the message was such
// a key; it must then not be dispatched. Loops do this by themselves.
BOOL IsDialogMessageA(HWND dialog, const MSG* message);

// ---- rectangles
// -----------------------------------------------------------------------------------

constexpr bool IsRectEmpty(const RECT& rect) {
  return rect.left >= rect.right || rect.top >= rect.bottom;
}
constexpr bool PtInRect(const RECT& rect, POINT point) {
  return point.x >= rect.left && point.x < rect.right && point.y >= rect.top &&
         point.y < rect.bottom;
}
