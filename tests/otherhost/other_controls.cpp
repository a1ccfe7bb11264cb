// The other host's windows and pictures. Windows are never made here: dialogs of this host exist as
// objects only, and draw when told to.
#include <string>

#include "elugraph/host/controls.h"
#include "tests/otherhost/other_host.h"

ResId::ResId(const char* resourceName, HMODULE itsModule) : name(resourceName), module(itsModule) {}
ResId::ResId(unsigned number, HMODULE itsModule) : ResId(MAKEINTRESOURCEA(number), itsModule) {}
// This host has no templates.
ResIdCheck::ResIdCheck(const char* resourceName, HMODULE itsModule, const char* type)
    : ResId(resourceName, itsModule) {
  RCerr(type, "not found", *this);
}
ResIdCheck::ResIdCheck(unsigned number, HMODULE itsModule, const char* type)
    : ResIdCheck(MAKEINTRESOURCEA(number), itsModule, type) {}
void RCerr(const char*, const char* text, const ResId& resource) {
  other_host::Called(text + std::string(" ") +
                     std::to_string(reinterpret_cast<std::uintptr_t>(resource.name)));
}

Thunk::Thunk() = default;
Thunk::~Thunk() = default;
int Thunk::_AddRef() { return ++references; }
int Thunk::_Release() { return --references; }

TORVDlg::TORVDlg(HWND parent, const ResIdCheck& dialogTemplate, HWND* place, const ResId& resource)
    : parent_(parent), template_(dialogTemplate), place_(place), resource_(resource) {}
TORVDlg::~TORVDlg() = default;
LRESULT TORVDlg::WindowProc(UINT, WPARAM, LPARAM) { return 0; }
LRESULT TORVDlg::EvCommand(UINT, HWND, UINT) { return 0; }
void TORVDlg::SetupWindow() {}
bool TORVDlg::CanClose() { return true; }
HWND TORVDlg::Create(int) { return nullptr; }
void TORVDlg::Reset() {}
HWND TORVDlg::GetInvalid() { return nullptr; }
bool TORVDlg::ApplyData() { return true; }
int TORVDlg::Execute() { return 0; }
HWND PostExecute(HWND, PostExecuteCallback, void*, bool) { return nullptr; }
bool ChooseColorA(HWND, COLORREF*, void*, void*, unsigned) { return false; }

LastPaint::LastPaint() = default;
LastPaint::~LastPaint() = default;
bool LastPaint::ExistCursor() { return false; }
void LastPaint::DrawCursor(HDC) {}
bool LastPaint::MsgFilter(LRESULT&, HWND, UINT, WPARAM, LPARAM) { return false; }
void LastPaint::Invalidate(const RECT*) { other_host::Called("Invalidate"); }
void LastPaint::EraseBMP() { other_host::Called("EraseBMP"); }

Bitmap::Bitmap() = default;
Bitmap::~Bitmap() { Erase(); }
bool Bitmap::Create(int width, int height, int bytesPerPixel, int) {
  other_host::Called("Bitmap " + std::to_string(width) + " " + std::to_string(height));
  if (!other_host::Answer().bitmaps) return false;
  info = new BITMAPINFO{};
  info->bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info->bmiHeader.biPlanes = 1;
  info->bmiHeader.biWidth = width;
  info->bmiHeader.biHeight = height;
  info->bmiHeader.biBitCount = static_cast<WORD>(8 * bytesPerPixel);
  const int stride = (width * bytesPerPixel + 3) / 4 * 4;
  bits = new BYTE[static_cast<std::size_t>(stride) * static_cast<std::size_t>(height)]();
  return true;
}
void Bitmap::Erase() {
  delete info;
  delete[] bits;
  info = nullptr;
  bits = nullptr;
}
RandomAccess::RandomAccess() = default;
RandomAccess::~RandomAccess() { Destroy(); }
bool RandomAccess::Set(Bitmap* bitmap, RECT part) {
  const int stride = (bitmap->Width() * bitmap->info->bmiHeader.biBitCount / 8 + 3) / 4 * 4;
  rowCount = part.bottom;
  rows = new BYTE*[static_cast<std::size_t>(rowCount)];
  for (int row = 0; row < rowCount; ++row) rows[row] = bitmap->bits + (rowCount - 1 - row) * stride;
  return true;
}
void RandomAccess::Destroy() {
  delete[] rows;
  rows = nullptr;
}
