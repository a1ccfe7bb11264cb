// Resources by name or number, kept in modules: texts, cursors, icons and dialog templates.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/ui/user.h"

namespace ui {

// One size of a cursor or an icon. Pixels are 0xAARRGGBB, not premultiplied, rows from the top.
struct Image {
  int width = 0;
  int height = 0;
  POINT hotSpot{0, 0};  // the pixel that points; inside the image
  std::vector<std::uint32_t> argb;
};

// An image drawn with characters, one text per row: '#' black, 'o' white, a digit or 'a' … 'f' a
// colour of the 16-colour palette (0 black, 1 dark red … 7 light grey, 8 grey, 9 red … f white),
// anything else transparent. Short rows are filled up. The hot spot is limited to the image.
Image ImageFromRows(const std::vector<std::string_view>& rows, POINT hotSpot);

// Positions and extents of a template: pixels at 100 %, multiplied by the layout scale; or dialog
// units, a quarter of the dialog font's average character width and an eighth of its height.
enum class Units { kPixels, kDialogUnits };

struct ControlTemplate {
  const char* className;  // "BUTTON", "STATIC" or a registered class
  const char* text;
  int id;
  DWORD style;  // WS_CHILD is added; WS_VISIBLE too unless `hidden`
  int x;
  int y;
  int width;
  int height;
  bool hidden = false;
};

struct DialogTemplate {
  std::string caption;
  DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU;  // WS_THICKFRAME: the user may resize it
  Units units = Units::kPixels;
  int width = 0;  // of the client area
  int height = 0;
  // Kept free of the window's own picture for controls along the top edge.
  int topStrip = 0;
  const char* fontFace = "Sans";
  int fontHeight = 12;                    // character height in pixels at 100 %
  std::vector<ControlTemplate> controls;  // in tab order; the texts must outlive the module
};

// A module is a set of resources; it lives as long as the process. Registering a name again gives
// the same module.
HMODULE RegisterModule(std::string_view name);
bool IsModule(HMODULE module);

// Each replaces a resource of the same name and type. False for what is not a module, an empty
// text name, or an image list without a usable image.
bool AddString(HMODULE module, UINT number, std::string text);
bool AddCursor(HMODULE module, const char* name, std::vector<Image> sizes);
bool AddIcon(HMODULE module, const char* name, std::vector<Image> sizes);
bool AddDialog(HMODULE module, const char* name, DialogTemplate dialog);

// Null where there is none.
const DialogTemplate* FindDialog(HMODULE module, const char* name);

// A cursor of one's own, of one or several sizes; null without a usable image (extents 1 … 256,
// width × height pixels). It lives as long as the process.
HCURSOR CreateCursor(std::vector<Image> sizes);
// The image of a cursor or icon for an extent in pixels: the largest size not above it, magnified
// by whole multiples while that fits; otherwise the smallest. An empty image for other handles.
Image ImageOf(HICON icon, int extent);
// IDC_ number of a system cursor, 0 for other handles.
unsigned SystemCursorNumber(HCURSOR cursor);

// A modeless dialog window made from a template, hidden, its owner `owner`. `procedure` gets every
// message from WM_NCCREATE (whose CREATESTRUCTA carries `parameter`) on; the controls exist when
// WM_INITDIALOG comes with `parameter`. Handing on what it does not handle to DefDlgProcA is its
// duty. Null without the template.
HWND CreateDialogWindow(HMODULE module, const char* name, HWND owner, WNDPROC procedure,
                        void* parameter);
// The template a dialog was made from; null for other windows.
const DialogTemplate* TemplateOf(HWND dialog);
// A length of the dialog's template across (x) or down (y) in pixels.
SIZE TemplateToPixels(HWND dialog, SIZE extent);

}  // namespace ui
