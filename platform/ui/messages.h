// Numbers of the window interface: messages, styles, flags, keys, metrics, control identifiers.
#pragma once

#include "platform/gfx/types.h"

// ---- messages -----------------------------------------------------------------------------------

inline constexpr UINT WM_NULL = 0x0000;
inline constexpr UINT WM_CREATE = 0x0001;   // lParam: CREATESTRUCTA*; −1 refuses the window
inline constexpr UINT WM_DESTROY = 0x0002;  // children still exist
inline constexpr UINT WM_MOVE = 0x0003;     // lParam: position of the client area
inline constexpr UINT WM_SIZE = 0x0005;     // lParam: extent of the client area
inline constexpr UINT WM_ACTIVATE = 0x0006;
inline constexpr UINT WM_SETFOCUS = 0x0007;
inline constexpr UINT WM_KILLFOCUS = 0x0008;
inline constexpr UINT WM_ENABLE = 0x000A;
inline constexpr UINT WM_SETTEXT = 0x000C;
inline constexpr UINT WM_PAINT = 0x000F;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_QUIT = 0x0012;
inline constexpr UINT WM_ERASEBKGND = 0x0014;  // wParam: HDC; non-zero: the background is painted
inline constexpr UINT WM_SHOWWINDOW = 0x0018;
inline constexpr UINT WM_SETCURSOR = 0x0020;  // wParam: window; lParam: hit code, mouse message
inline constexpr UINT WM_DRAWITEM = 0x002B;   // wParam: control id; lParam: DRAWITEMSTRUCT*
inline constexpr UINT WM_SETFONT = 0x0030;    // wParam: HFONT, borrowed; lParam: repaint
inline constexpr UINT WM_GETFONT = 0x0031;
inline constexpr UINT WM_WINDOWPOSCHANGED = 0x0047;  // lParam: const WINDOWPOS*
inline constexpr UINT WM_NCCREATE = 0x0081;          // the first message; 0 refuses the window
inline constexpr UINT WM_NCDESTROY = 0x0082;         // the last message; children are gone
inline constexpr UINT WM_GETDLGCODE = 0x0087;
inline constexpr UINT WM_KEYDOWN = 0x0100;
inline constexpr UINT WM_KEYUP = 0x0101;
inline constexpr UINT WM_CHAR = 0x0102;
inline constexpr UINT WM_INITDIALOG = 0x0110;   // lParam: the creator's parameter
inline constexpr UINT WM_COMMAND = 0x0111;      // wParam: id, notification code; lParam: control
inline constexpr UINT WM_TIMER = 0x0113;        // wParam: timer id
inline constexpr UINT WM_CTLCOLORBTN = 0x0135;  // wParam: HDC; lParam: control; result: HBRUSH
inline constexpr UINT WM_CTLCOLORDLG = 0x0136;
inline constexpr UINT WM_CTLCOLORSTATIC = 0x0138;
// lParam of mouse messages: signed 16-bit position in the client area; wParam: MK_ flags.
inline constexpr UINT WM_MOUSEFIRST = 0x0200;
inline constexpr UINT WM_MOUSEMOVE = 0x0200;
inline constexpr UINT WM_LBUTTONDOWN = 0x0201;
inline constexpr UINT WM_LBUTTONUP = 0x0202;
inline constexpr UINT WM_RBUTTONDOWN = 0x0204;
inline constexpr UINT WM_RBUTTONUP = 0x0205;
inline constexpr UINT WM_MBUTTONDOWN = 0x0207;
inline constexpr UINT WM_MBUTTONUP = 0x0208;
inline constexpr UINT WM_MOUSEWHEEL = 0x020A;  // wParam high word: signed, 120 per notch, up > 0
inline constexpr UINT WM_MOUSELAST = 0x020A;
inline constexpr UINT WM_CAPTURECHANGED = 0x0215;  // lParam: window that gets the capture
inline constexpr UINT WM_MOUSELEAVE = 0x02A3;      // sent to every window that the mouse leaves
inline constexpr UINT WM_USER = 0x0400;
inline constexpr UINT WM_APP = 0x8000;

inline constexpr UINT DM_GETDEFID = WM_USER + 0;  // result: id, DC_HASDEFID in the high word
inline constexpr UINT DM_SETDEFID = WM_USER + 1;
inline constexpr int DC_HASDEFID = 0x534B;

inline constexpr UINT BM_GETCHECK = 0x00F0;
inline constexpr UINT BM_SETCHECK = 0x00F1;
inline constexpr UINT BM_GETSTATE = 0x00F2;
inline constexpr UINT BM_SETSTATE = 0x00F3;
inline constexpr UINT BM_CLICK = 0x00F5;

inline constexpr UINT BST_UNCHECKED = 0;
inline constexpr UINT BST_CHECKED = 1;
inline constexpr UINT BST_PUSHED = 4;
inline constexpr UINT BST_FOCUS = 8;
inline constexpr UINT BST_HOT = 0x200;  // the mouse is over it

inline constexpr UINT BN_CLICKED = 0;
inline constexpr UINT EN_CHANGE = 0x0300;

inline constexpr int WA_INACTIVE = 0;
inline constexpr int WA_ACTIVE = 1;

inline constexpr int HTNOWHERE = 0;
inline constexpr int HTCLIENT = 1;

inline constexpr WPARAM MK_LBUTTON = 0x0001;
inline constexpr WPARAM MK_RBUTTON = 0x0002;
inline constexpr WPARAM MK_SHIFT = 0x0004;
inline constexpr WPARAM MK_CONTROL = 0x0008;
inline constexpr WPARAM MK_MBUTTON = 0x0010;

inline constexpr int SIZE_RESTORED = 0;

// What a control does with keys itself (WM_GETDLGCODE).
inline constexpr LRESULT DLGC_WANTARROWS = 0x0001;
inline constexpr LRESULT DLGC_WANTTAB = 0x0002;
inline constexpr LRESULT DLGC_WANTALLKEYS = 0x0004;
inline constexpr LRESULT DLGC_DEFPUSHBUTTON = 0x0010;
inline constexpr LRESULT DLGC_UNDEFPUSHBUTTON = 0x0020;
inline constexpr LRESULT DLGC_RADIOBUTTON = 0x0040;
inline constexpr LRESULT DLGC_STATIC = 0x0100;
inline constexpr LRESULT DLGC_BUTTON = 0x2000;

// ---- styles -------------------------------------------------------------------------------------

inline constexpr DWORD WS_OVERLAPPED = 0x00000000;
inline constexpr DWORD WS_POPUP = 0x80000000;
inline constexpr DWORD WS_CHILD = 0x40000000;
inline constexpr DWORD WS_VISIBLE = 0x10000000;
inline constexpr DWORD WS_DISABLED = 0x08000000;
inline constexpr DWORD WS_CAPTION = 0x00C00000;
inline constexpr DWORD WS_SYSMENU = 0x00080000;
inline constexpr DWORD WS_THICKFRAME = 0x00040000;  // the user may resize the window
inline constexpr DWORD WS_GROUP = 0x00020000;       // first control of a group
inline constexpr DWORD WS_TABSTOP = 0x00010000;

inline constexpr DWORD BS_PUSHBUTTON = 0x0;
inline constexpr DWORD BS_DEFPUSHBUTTON = 0x1;
inline constexpr DWORD BS_RADIOBUTTON = 0x4;      // the owner checks it
inline constexpr DWORD BS_AUTORADIOBUTTON = 0x9;  // checks itself and unchecks its group
inline constexpr DWORD BS_OWNERDRAW = 0xB;
inline constexpr DWORD BS_TYPEMASK = 0xF;

inline constexpr DWORD SS_LEFT = 0x0;
inline constexpr DWORD SS_CENTER = 0x1;
inline constexpr DWORD SS_RIGHT = 0x2;
inline constexpr DWORD SS_TYPEMASK = 0x1F;
inline constexpr DWORD SS_CENTERIMAGE = 0x200;  // the text stands in the middle of the height

inline constexpr int GWL_STYLE = -16;
inline constexpr int GWLP_WNDPROC = -4;
inline constexpr int GWLP_ID = -12;
inline constexpr int GWLP_USERDATA = -21;

// ---- positions, showing
// ---------------------------------------------------------------------------

inline constexpr UINT SWP_NOSIZE = 0x0001;
inline constexpr UINT SWP_NOMOVE = 0x0002;
inline constexpr UINT SWP_NOZORDER = 0x0004;
inline constexpr UINT SWP_NOREDRAW = 0x0008;
inline constexpr UINT SWP_NOACTIVATE = 0x0010;
inline constexpr UINT SWP_FRAMECHANGED = 0x0020;
inline constexpr UINT SWP_SHOWWINDOW = 0x0040;
inline constexpr UINT SWP_HIDEWINDOW = 0x0080;
inline constexpr UINT SWP_NOOWNERZORDER = 0x0200;

inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOWNORMAL = 1;
inline constexpr int SW_SHOWNOACTIVATE = 4;
inline constexpr int SW_SHOW = 5;

inline constexpr int CW_USEDEFAULT = static_cast<int>(0x80000000U);

// ---- owner drawing
// --------------------------------------------------------------------------------

inline constexpr UINT ODT_BUTTON = 4;
inline constexpr UINT ODA_DRAWENTIRE = 1;
inline constexpr UINT ODS_SELECTED = 0x0001;  // pressed
inline constexpr UINT ODS_DISABLED = 0x0004;
inline constexpr UINT ODS_FOCUS = 0x0010;

// ---- identifiers, keys
// ----------------------------------------------------------------------------

inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;

inline constexpr WORD VK_BACK = 0x08;
inline constexpr WORD VK_TAB = 0x09;
inline constexpr WORD VK_RETURN = 0x0D;
inline constexpr WORD VK_SHIFT = 0x10;
inline constexpr WORD VK_CONTROL = 0x11;
inline constexpr WORD VK_MENU = 0x12;
inline constexpr WORD VK_ESCAPE = 0x1B;
inline constexpr WORD VK_SPACE = 0x20;
inline constexpr WORD VK_PRIOR = 0x21;
inline constexpr WORD VK_NEXT = 0x22;
inline constexpr WORD VK_END = 0x23;
inline constexpr WORD VK_HOME = 0x24;
inline constexpr WORD VK_LEFT = 0x25;
inline constexpr WORD VK_UP = 0x26;
inline constexpr WORD VK_RIGHT = 0x27;
inline constexpr WORD VK_DOWN = 0x28;
inline constexpr WORD VK_DELETE = 0x2E;

// ---- metrics
// --------------------------------------------------------------------------------------

inline constexpr int SM_CXSCREEN = 0;
inline constexpr int SM_CYSCREEN = 1;
inline constexpr int SM_CXBORDER = 5;
inline constexpr int SM_CYBORDER = 6;
inline constexpr int SM_CXICON = 11;
inline constexpr int SM_CYICON = 12;
inline constexpr int SM_CXCURSOR = 13;
inline constexpr int SM_CYCURSOR = 14;
inline constexpr int SM_CXEDGE = 45;
inline constexpr int SM_CYEDGE = 46;
inline constexpr int SM_CXDRAG = 68;
inline constexpr int SM_CYDRAG = 69;

// ---- resources
// ------------------------------------------------------------------------------------

// A resource name is a text (compared without regard to ASCII case) or a number below 65536 cast to
// a pointer, so that numbers can stand where names are expected.
inline const char* MAKEINTRESOURCEA(unsigned number) {
  return reinterpret_cast<const char*>(static_cast<UINT_PTR>(number));
}
inline bool IS_INTRESOURCE(const char* name) { return reinterpret_cast<UINT_PTR>(name) < 0x10000; }

// Initialised before any code runs: static objects look resources up.
inline const char* const RT_CURSOR = reinterpret_cast<const char*>(UINT_PTR{1});
inline const char* const RT_ICON = reinterpret_cast<const char*>(UINT_PTR{3});
inline const char* const RT_DIALOG = reinterpret_cast<const char*>(UINT_PTR{5});
inline const char* const RT_STRING = reinterpret_cast<const char*>(UINT_PTR{6});
inline const char* const RT_GROUP_CURSOR = reinterpret_cast<const char*>(UINT_PTR{12});
inline const char* const RT_GROUP_ICON = reinterpret_cast<const char*>(UINT_PTR{14});

inline const char* const IDC_ARROW = reinterpret_cast<const char*>(UINT_PTR{32512});
inline const char* const IDC_IBEAM = reinterpret_cast<const char*>(UINT_PTR{32513});
inline const char* const IDC_WAIT = reinterpret_cast<const char*>(UINT_PTR{32514});
inline const char* const IDC_CROSS = reinterpret_cast<const char*>(UINT_PTR{32515});
inline const char* const IDC_SIZEWE = reinterpret_cast<const char*>(UINT_PTR{32644});
inline const char* const IDC_SIZENS = reinterpret_cast<const char*>(UINT_PTR{32645});
inline const char* const IDC_HAND = reinterpret_cast<const char*>(UINT_PTR{32649});

// ---- words and parameters
// -------------------------------------------------------------------------

constexpr WORD LOWORD(WPARAM value) { return static_cast<WORD>(value & 0xFFFF); }
constexpr WORD HIWORD(WPARAM value) { return static_cast<WORD>(value >> 16 & 0xFFFF); }
constexpr WORD LOWORD(LPARAM value) { return LOWORD(static_cast<WPARAM>(value)); }
constexpr WORD HIWORD(LPARAM value) { return HIWORD(static_cast<WPARAM>(value)); }
constexpr int GET_X_LPARAM(LPARAM value) { return static_cast<std::int16_t>(LOWORD(value)); }
constexpr int GET_Y_LPARAM(LPARAM value) { return static_cast<std::int16_t>(HIWORD(value)); }
constexpr WPARAM MAKEWPARAM(int low, int high) {
  return static_cast<WPARAM>(static_cast<WORD>(low)) | static_cast<WPARAM>(static_cast<WORD>(high))
                                                           << 16;
}
// Like its word pair, sign-extended from 32 bits.
constexpr LPARAM MAKELPARAM(int low, int high) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(MAKEWPARAM(low, high)));
}
