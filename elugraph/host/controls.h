// Classes of the host's control library and of its thunk library: windows, pictures, dialogs.
#pragma once

#include "elugraph/host/kernel.h"
#include "platform/gfx/gdi.h"

// A resource name: a text, or a number below 65536 cast to one, in a module.
class ELUGRAPH_HOST ResId {
 public:
  ResId(const char* name, HMODULE module);
  ResId(unsigned number, HMODULE module);

  const char* name;
  HMODULE module;
};

// A resource that must exist: construction looks it up (dialog templates in the module that
// muiGetDlgTemplateModule gives) and reports a missing one to RCerr.
class ELUGRAPH_HOST ResIdCheck : public ResId {
 public:
  ResIdCheck(const char* name, HMODULE module, const char* type);
  ResIdCheck(unsigned number, HMODULE module, const char* type);
};

// Reports a resource of `type` that was not found; `text` is "not found".
ELUGRAPH_HOST void RCerr(const char* type, const char* text, const ResId& resource);

// Counted window object. The window handle follows the table of operations.
class ELUGRAPH_HOST Thunk {
 public:
  virtual ~Thunk();
  virtual int _AddRef();
  virtual int _Release();

  HWND hwnd = nullptr;

 protected:
  Thunk();

 private:
  int references_ = 0;
};

// Extent of a text in a context. `window` may be null.
ELUGRAPH_HOST SIZE GetTextExtent(HWND window, const char* text, HDC hdc, int length);

// Dialog window. Operations in slot order behind Thunk's three.
class ELUGRAPH_HOST TORVDlg : public Thunk {
 public:
  // `place` (may be null) follows the window handle while the window lives.
  TORVDlg(HWND parent, const ResIdCheck& dialogTemplate, HWND* place, const ResId& resource);
  ~TORVDlg() override;

  virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
  virtual LRESULT EvCommand(UINT id, HWND control, UINT notification);
  virtual void SetupWindow();
  virtual bool CanClose();
  // Makes the window; −1 makes it modeless. Returns its handle.
  virtual HWND Create(int mode);
  virtual void Reset();
  virtual HWND GetInvalid();
  virtual bool ApplyData();
  virtual int Execute();

 private:
  HWND parent_;
  ResIdCheck template_;
  HWND* place_;
  ResId resource_;
};

// Paint cache with a cursor overlay.
class ELUGRAPH_HOST LastPaint {
 public:
  LastPaint();
  LastPaint(const LastPaint&) = delete;
  LastPaint& operator=(const LastPaint&) = delete;
  virtual ~LastPaint();
  // Paints the window's picture.
  virtual void PaintImage(HWND window, HDC hdc, RECT rect) = 0;
  virtual bool ExistCursor();
  virtual void DrawCursor(HDC hdc);
  // True where it handled the message; `result` is then the message's result.
  virtual bool MsgFilter(LRESULT& result, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  // The part (null: all) must be painted anew.
  void Invalidate(const RECT* part);
  // Drops the cached picture.
  void EraseBMP();

 private:
  HBITMAP cache_ = nullptr;
  SIZE extent_{0, 0};
  bool valid_ = false;
};

using PostExecuteCallback = void (*)(int result, void* context);
// Runs a dialog made with Create(−1); the callback gets its result (1: OK). Returns the window.
ELUGRAPH_HOST HWND PostExecute(HWND dialog, PostExecuteCallback callback, void* context, bool flag);

// A picture whose header and bits suit SetDIBitsToDevice.
class ELUGRAPH_HOST Bitmap {
 public:
  Bitmap();
  Bitmap(const Bitmap&) = delete;
  Bitmap& operator=(const Bitmap&) = delete;
  ~Bitmap();
  bool Create(int width, int height, int bytesPerPixel, int colorTableType);
  void Erase();

  BITMAPINFO* info;
  BYTE* bits;
};

// The pixel rows of a bitmap inside a rectangle.
class ELUGRAPH_HOST RandomAccess {
 public:
  RandomAccess();
  RandomAccess(const RandomAccess&) = delete;
  RandomAccess& operator=(const RandomAccess&) = delete;
  ~RandomAccess();
  bool Set(Bitmap* bitmap, RECT part);
  void Destroy();

  BYTE** rows;
  int rowCount;
};

// True where the user picked a colour, which `color` then holds.
ELUGRAPH_HOST bool ChooseColorA(HWND owner, COLORREF* color, void* hook, void* hookData,
                                unsigned reserved);
