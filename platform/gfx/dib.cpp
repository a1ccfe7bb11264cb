#include "platform/gfx/dib.h"

#include <cstdint>
#include <cstring>
#include <limits>

namespace gfx {

bool DibForm::Parse(const BITMAPINFO* info) {
  if (info == nullptr) return false;
  BITMAPINFOHEADER header;
  std::memcpy(&header, static_cast<const void*>(info), sizeof header);
  if (header.biSize != sizeof header || header.biPlanes != 1 || header.biCompression != BI_RGB ||
      (header.biBitCount != 24 && header.biBitCount != 32)) {
    return false;
  }
  const std::int64_t rows = header.biHeight < 0 ? -std::int64_t{header.biHeight} : header.biHeight;
  if (header.biWidth <= 0 || rows == 0 || rows > std::numeric_limits<int>::max()) return false;
  const std::int64_t rowBytes = (std::int64_t{header.biWidth} * header.biBitCount + 31) / 32 * 4;
  if (rowBytes > std::numeric_limits<std::ptrdiff_t>::max() / rows) return false;
  width = header.biWidth;
  height = static_cast<int>(rows);
  bottomUp = header.biHeight > 0;
  bytesPerPixel = header.biBitCount / 8;
  stride = static_cast<std::ptrdiff_t>(rowBytes);
  return true;
}

ImageView DibForm::View(const void* bits, int left, int scan, int columns, int rows) const {
  const std::ptrdiff_t topScan = bottomUp ? std::ptrdiff_t{scan} + rows - 1 : scan;
  const BYTE* top = static_cast<const BYTE*>(bits) + topScan * stride +
                    static_cast<std::ptrdiff_t>(left) * bytesPerPixel;
  return {top, bottomUp ? -stride : stride, columns, rows, bytesPerPixel};
}

}  // namespace gfx
