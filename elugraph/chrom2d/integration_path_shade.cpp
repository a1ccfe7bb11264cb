// Darkening of the map outside the bands.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "elugraph/chrom2d/integration_path_dlg.h"

namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

// Pixels of 32 bits, rows from the top.
class Pixels {
 public:
  Pixels(int width, int height)
      : bytes_(static_cast<BYTE*>(std::calloc(static_cast<std::size_t>(height), RowSize(width)))) {
    BITMAPINFOHEADER& header = info.bmiHeader;
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = -height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biCompression = BI_RGB;
  }
  explicit operator bool() const { return bytes_ != nullptr; }
  int Width() const { return info.bmiHeader.biWidth; }
  int Height() const { return -info.bmiHeader.biHeight; }
  BYTE* Row(int row) const {
    return bytes_.get() + static_cast<std::size_t>(row) * RowSize(Width());
  }

  BITMAPINFO info{};

 private:
  static std::size_t RowSize(int width) { return static_cast<std::size_t>(width) * 4; }

  std::unique_ptr<BYTE, Free> bytes_;
};

// From the place (left, top) of a picture of 3 bytes per pixel.
bool ReadPicture(Bitmap& picture, int left, int top, const Pixels& into) {
  RandomAccess access;
  const int width = into.Width();
  if (!access.Set(&picture, {left, top, left + width, top + into.Height()})) return false;
  for (int row = 0; row < into.Height(); ++row) {
    const BYTE* from = access.rows[row];
    BYTE* to = into.Row(row);
    for (int column = 0; column < width; ++column, from += 3, to += 4) std::copy_n(from, 3, to);
  }
  return true;
}

// A memory context with a bitmap of its own selected.
class MemoryPicture {
 public:
  MemoryPicture(HDC like, int width, int height)
      : hdc_(CreateCompatibleDC(like)),
        bitmap_(CreateCompatibleBitmap(like, width, height)),
        before_(SelectObject(hdc_, bitmap_)) {}
  MemoryPicture(const MemoryPicture&) = delete;
  MemoryPicture& operator=(const MemoryPicture&) = delete;
  ~MemoryPicture() {
    Deselect();
    if (bitmap_ != nullptr) DeleteObject(bitmap_);
    if (hdc_ != nullptr) DeleteDC(hdc_);
  }
  HDC Context() const { return hdc_; }
  bool Selected() const { return before_ != nullptr; }
  HBITMAP Deselect() {
    if (before_ != nullptr) SelectObject(hdc_, before_);
    before_ = nullptr;
    return bitmap_;
  }

 private:
  HDC hdc_;
  HBITMAP bitmap_;
  HGDIOBJ before_;
};

bool ReadDevice(HDC hdc, int x, int y, Pixels& into) {
  const int width = into.Width();
  const int height = into.Height();
  MemoryPicture copy(hdc, width, height);
  if (!copy.Selected()) return false;
  if (!BitBlt(copy.Context(), 0, 0, width, height, hdc, x, y, SRCCOPY)) return false;
  return GetDIBits(hdc, copy.Deselect(), 0, static_cast<UINT>(height), into.Row(0), &into.info,
                   DIB_RGB_COLORS) == height;
}

void Darken(const Pixels& pixels) {
  BYTE* const end = pixels.Row(pixels.Height());
  for (BYTE* value = pixels.Row(0); value != end; ++value) {
    *value = static_cast<BYTE>(*value - (*value >> 2));
  }
}

}  // namespace

bool TIntegrationPathDlg::PictureFits() const {
  return picture != nullptr && picture->Width() == mapRect.right - mapRect.left &&
         picture->Height() == mapRect.bottom - mapRect.top;
}

void TIntegrationPathDlg::ShadeRect(HDC hdc, int x0, int y0, int x1, int y1) {
  x0 = std::max<int>(x0, mapRect.left);
  x1 = std::min<int>(x1, mapRect.right);
  y0 = std::max<int>(y0, mapRect.top);
  y1 = std::min<int>(y1, mapRect.bottom);
  if (x0 >= x1 || y0 >= y1) return;
  Pixels pixels(x1 - x0, y1 - y0);
  if (!pixels) return;
  const bool read =
      (PictureFits() && ReadPicture(*picture, x0 - mapRect.left, y0 - mapRect.top, pixels)) ||
      ReadDevice(hdc, x0, y0, pixels);
  if (!read) return;
  Darken(pixels);
  SetDIBitsToDevice(
      hdc, x0, y0, static_cast<DWORD>(pixels.Width()), static_cast<DWORD>(pixels.Height()), 0, 0, 0,
      static_cast<UINT>(pixels.Height()), pixels.Row(0), &pixels.info, DIB_RGB_COLORS);
}
