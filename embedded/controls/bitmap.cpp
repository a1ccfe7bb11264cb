// Pictures and their rows.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

#include "elugraph/host/controls.h"

namespace {

// Bytes of a row, a multiple of 4.
std::size_t StrideOf(const BITMAPINFOHEADER& header) {
  return (static_cast<std::size_t>(header.biWidth) * header.biBitCount / 8 + 3) / 4 * 4;
}

constexpr std::int64_t kMaxBytes = std::int64_t{1} << 30;

}  // namespace

Bitmap::Bitmap() = default;

Bitmap::~Bitmap() { Erase(); }

bool Bitmap::Create(int width, int height, int bytesPerPixel, int) {
  Erase();
  if (width < 1 || height < 1 || (bytesPerPixel != 3 && bytesPerPixel != 4)) return false;
  if ((std::int64_t{width} * bytesPerPixel + 3) * height > kMaxBytes) return false;
  info = new (std::nothrow) BITMAPINFO{};
  if (info == nullptr) return false;
  info->bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info->bmiHeader.biWidth = width;
  info->bmiHeader.biHeight = height;
  info->bmiHeader.biPlanes = 1;
  info->bmiHeader.biBitCount = static_cast<WORD>(8 * bytesPerPixel);
  info->bmiHeader.biCompression = BI_RGB;
  bits =
      static_cast<BYTE*>(std::calloc(static_cast<std::size_t>(height), StrideOf(info->bmiHeader)));
  if (bits == nullptr) Erase();
  return bits != nullptr;
}

void Bitmap::Erase() {
  std::free(bits);
  delete info;
  bits = nullptr;
  info = nullptr;
}

RandomAccess::RandomAccess() = default;

RandomAccess::~RandomAccess() { Destroy(); }

bool RandomAccess::Set(Bitmap* bitmap, RECT part) {
  Destroy();
  if (bitmap == nullptr || bitmap->bits == nullptr) return false;
  const LONG left = std::max<LONG>(part.left, 0), top = std::max<LONG>(part.top, 0);
  const LONG right = std::min<LONG>(part.right, bitmap->Width());
  const LONG bottom = std::min<LONG>(part.bottom, bitmap->Height());
  if (left >= right || top >= bottom) return false;
  rows = new (std::nothrow) BYTE*[static_cast<std::size_t>(bottom - top)];
  if (rows == nullptr) return false;
  rowCount = bottom - top;
  const BITMAPINFOHEADER& header = bitmap->info->bmiHeader;
  const std::size_t offset = static_cast<std::size_t>(left) * header.biBitCount / 8;
  for (int row = 0; row < rowCount; ++row) {
    const auto stored = static_cast<std::size_t>(header.biHeight - 1 - (top + row));
    rows[row] = bitmap->bits + stored * StrideOf(header) + offset;
  }
  return true;
}

void RandomAccess::Destroy() {
  delete[] rows;
  rows = nullptr;
  rowCount = 0;
}
