// Classes of the host's control library and of its thunk library: windows, pictures, dialogs.
#pragma once

#include "elugraph/host/kernel.h"
#include "platform/ui/user.h"

// A resource name: a text, or a number below 65536 cast to one, in a module. Larger numbers count
// as 0. The text must outlive the name.
class ELUGRAPH_HOST ResId {
 public:
  ResId(const char* name, HMODULE module);
  ResId(unsigned number, HMODULE module);

  const char* name;
  HMODULE module;
};

// A resource that must exist: construction looks it up and reports a missing one to RCerr. Dialog
// templates are looked for in the module that muiGetDlgTemplateModule gives, which `module` then
// is; texts and icons through LoadStringA and LoadIconA.
class ELUGRAPH_HOST ResIdCheck : public ResId {
 public:
  ResIdCheck(const char* name, HMODULE module, const char* type);
  ResIdCheck(unsigned number, HMODULE module, const char* type);
};

// Reports a resource of `type` that was not found; `text` is "not found".
ELUGRAPH_HOST void RCerr(const char* type, const char* text, const ResId& resource);

// Counted window object. The window handle follows the table of operations.
//
// An object starts with a count of 0. The last _Release deletes it: an object on the stack, or one
// with another owner, takes a reference of its own first.
class ELUGRAPH_HOST Thunk {
 public:
  Thunk(const Thunk&) = delete;
  Thunk& operator=(const Thunk&) = delete;
  virtual ~Thunk();
  // Both return the new count.
  virtual int _AddRef();
  virtual int _Release();

  HWND hwnd = nullptr;

 protected:
  Thunk();
  int references = 0;
};

// Extent of a text in a context, in its logical units; 0 × 0 for bad arguments. With a null `hdc`
// the context of `window` is used, or of the screen where that is null too.
ELUGRAPH_HOST SIZE GetTextExtent(HWND window, const char* text, HDC hdc, int length);

// Dialog window. Operations in slot order behind Thunk's three.
//
// Life: the window holds a reference from Create on and drops it as the last thing it does, so an
// object made with `new` ends with its window; where Create fails it ends there and then, unless
// someone else holds a reference. An object that is deleted takes its window with it; the window's
// last messages then no longer reach it.
class ELUGRAPH_HOST TORVDlg : public Thunk {
 public:
  // `place` (may be null) follows the window handle while the window lives; null before and after.
  TORVDlg(HWND parent, const ResIdCheck& dialogTemplate, HWND* place, const ResId& resource);
  ~TORVDlg() override;

  // Gets every message of the window. WM_INITDIALOG becomes SetupWindow, WM_COMMAND becomes
  // EvCommand, WM_CLOSE the command IDCANCEL; the rest is DefDlgProcA's.
  virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
  // IDOK ends the dialog with 1 where CanClose agrees, IDCANCEL with 2 without asking. Result 0.
  virtual LRESULT EvCommand(UINT id, HWND control, UINT notification);
  // Called once, when the controls exist and the window is still hidden; calls Reset.
  virtual void SetupWindow();
  // Asked on IDOK: no control with invalid content (the first gets the focus), and ApplyData true.
  virtual bool CanClose();
  // Makes the window from the template and returns its handle, null on failure. −1 makes it hidden
  // and modeless, to be shown by PostExecute; other values show it at once. Calling it again while
  // the window lives returns the same handle.
  virtual HWND Create(int mode);
  // Puts the data into the controls; here nothing.
  virtual void Reset();
  // The first control whose content cannot be taken; here null.
  virtual HWND GetInvalid();
  // Takes the data from the controls; false refuses. Here true.
  virtual bool ApplyData();
  // Makes the window, runs it with the parent blocked and returns its result; 0 where it could not
  // be made. The object lives on.
  virtual int Execute();

 private:
  static LRESULT Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND parent_;
  ResIdCheck template_;
  HWND* place_;
  ResId resource_;
  bool closing_ = false;  // the dialog has its result
};

// Paint cache with a cursor overlay.
//
// The cache holds the client area's picture as PaintImage last painted it. A repaint copies it and
// draws the cursor over the copy; PaintImage runs only for what Invalidate, EraseBMP or a new
// extent made invalid. A strip that the dialog's template keeps free for controls (see
// ui::DialogTemplate) is not part of the picture.
class ELUGRAPH_HOST LastPaint {
 public:
  LastPaint();
  LastPaint(const LastPaint&) = delete;
  LastPaint& operator=(const LastPaint&) = delete;
  virtual ~LastPaint();
  // Paints the window's picture. `rect` is the whole picture in client coordinates, whatever part
  // is invalid; the context is clipped to that part.
  virtual void PaintImage(HWND window, HDC hdc, RECT rect) = 0;
  // True where a cursor is to be drawn over the picture; here false.
  virtual bool ExistCursor();
  virtual void DrawCursor(HDC hdc);
  // True where it handled the message; `result` is then the message's result. Handles WM_PAINT.
  virtual bool MsgFilter(LRESULT& result, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  // The part (client coordinates, null: all) must be painted anew. The window itself is not told.
  void Invalidate(const RECT* part);
  // Drops the cached picture.
  void EraseBMP();

 private:
  bool Update(HWND window, HDC hdc, const RECT& picture);

  HBITMAP cache_ = nullptr;
  RECT extent_{0, 0, 0, 0};   // what the cache shows
  RECT invalid_{0, 0, 0, 0};  // of the cache; empty: none
};

using PostExecuteCallback = void (*)(int result, void* context);
// Shows a dialog made with Create(−1) and returns its window at once; null for another window, or
// one that runs already. `callback` (may be null) gets the result (1: OK) when the dialog ends, 2
// where it is destroyed otherwise; then the dialog object is released. `flag`: the dialog's parent
// takes no input meanwhile.
ELUGRAPH_HOST HWND PostExecute(HWND dialog, PostExecuteCallback callback, void* context, bool flag);

// A picture whose header and bits suit SetDIBitsToDevice: BI_RGB, rows padded to 4 bytes, stored
// bottom row first (biHeight > 0).
class ELUGRAPH_HOST Bitmap {
 public:
  Bitmap();
  Bitmap(const Bitmap&) = delete;
  Bitmap& operator=(const Bitmap&) = delete;
  ~Bitmap();
  // All bytes 0. 3 or 4 bytes per pixel; such pictures have no colour table, so any
  // `colorTableType` will do. False, and no picture, for other arguments or without memory.
  bool Create(int width, int height, int bytesPerPixel, int colorTableType);
  void Erase();

  // 0 without a picture.
  int Width() const { return info != nullptr ? info->bmiHeader.biWidth : 0; }
  int Height() const { return info != nullptr ? info->bmiHeader.biHeight : 0; }

  BITMAPINFO* info = nullptr;
  BYTE* bits = nullptr;
};

// The pixel rows of a bitmap inside a rectangle. Row 0 is the top row on the screen: rows[r] points
// at the first byte of the pixel (part.left, part.top + r), counted from the top left corner.
class ELUGRAPH_HOST RandomAccess {
 public:
  RandomAccess();
  RandomAccess(const RandomAccess&) = delete;
  RandomAccess& operator=(const RandomAccess&) = delete;
  ~RandomAccess();
  // The part is cut to the picture. False, and no rows, where nothing is left of it. The picture
  // must outlive the rows.
  bool Set(Bitmap* bitmap, RECT part);
  void Destroy();

  BYTE** rows = nullptr;
  int rowCount = 0;
};

// A palette to choose from. True where the user picked a colour, which `color` then holds; `color`
// is shown as the present one. Blocks `owner` and returns when the palette has closed. The hook,
// its data and `reserved` are not used.
ELUGRAPH_HOST bool ChooseColorA(HWND owner, COLORREF* color, void* hook, void* hookData,
                                unsigned reserved);
