#include "platform/gfx/driver/raster_images.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace gfx {
namespace {

// One axis of a stretch: which source place each target place shows, in turn.
class Nearest {
 public:
  Nearest(std::int64_t first, std::int64_t toExtent, std::int64_t fromExtent)
      : divisor_(2 * toExtent),
        stepPlace_(2 * fromExtent / divisor_),
        stepRest_(2 * fromExtent % divisor_) {
    // Below 2^33 × 2^31.
    const std::uint64_t product =
        (2 * static_cast<std::uint64_t>(first) + 1) * static_cast<std::uint64_t>(fromExtent);
    place_ = static_cast<std::int64_t>(product / static_cast<std::uint64_t>(divisor_));
    rest_ = static_cast<std::int64_t>(product % static_cast<std::uint64_t>(divisor_));
  }
  std::int64_t Place() const { return place_; }
  void Next() {
    place_ += stepPlace_;
    rest_ += stepRest_;
    if (rest_ >= divisor_) {
      rest_ -= divisor_;
      ++place_;
    }
  }

 private:
  std::int64_t divisor_, stepPlace_, stepRest_;
  std::int64_t place_ = 0, rest_ = 0;
};

std::uint32_t PixelAt(const BYTE* bytes) {
  return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8 |
         static_cast<std::uint32_t>(bytes[2]) << 16;
}

// `count` pixels of a row of an image, none of them left out or twice.
void CopyRow(const BYTE* source, std::int64_t bytes, std::int64_t count, std::uint32_t* target) {
  if (count <= 0) return;
  // Four bytes at a time also of pixels of three, but for the last one, which may end the image.
  for (std::int64_t i = 0; i < count - 1; ++i, source += bytes) {
    std::uint32_t pixel;
    std::memcpy(&pixel, source, sizeof pixel);
    if constexpr (std::endian::native == std::endian::little) {
      target[i] = pixel & 0x00FFFFFF;
    } else {
      target[i] = PixelAt(source);
    }
  }
  target[count - 1] = PixelAt(source);
}

}  // namespace

void StretchImage(const Canvas& canvas, const RECT& to, const ImageView& image, const RECT& from) {
  const std::int64_t left = std::max<std::int64_t>(to.left, canvas.Left());
  const std::int64_t right = std::min<std::int64_t>(to.right, canvas.Right());
  const std::int64_t top = std::max<std::int64_t>(to.top, canvas.Top());
  const std::int64_t bottom = std::min<std::int64_t>(to.bottom, canvas.Bottom());
  if (left >= right || top >= bottom || from.left >= from.right || from.top >= from.bottom ||
      from.left < 0 || from.top < 0 || from.right > image.width || from.bottom > image.height) {
    return;
  }
  const std::int64_t bytes = image.bytesPerPixel;
  Nearest row(top - to.top, std::int64_t{to.bottom} - to.top, from.bottom - from.top);
  const Nearest firstColumn(left - to.left, std::int64_t{to.right} - to.left,
                            from.right - from.left);
  const bool sameWidth = std::int64_t{to.right} - to.left == from.right - from.left;
  std::int64_t shown = -1;  // the source row that the row above shows
  for (std::int64_t y = top; y < bottom; ++y, row.Next()) {
    std::uint32_t* const target = canvas.Row(y);
    if (row.Place() == shown) {
      std::copy(canvas.Row(y - 1) + left, canvas.Row(y - 1) + right, target + left);
      continue;
    }
    shown = row.Place();
    const BYTE* const source = image.top +
                               static_cast<std::ptrdiff_t>(from.top + shown) * image.stride +
                               static_cast<std::ptrdiff_t>(from.left * bytes);
    if (sameWidth) {
      CopyRow(source + static_cast<std::ptrdiff_t>((left - to.left) * bytes), bytes, right - left,
              target + left);
      continue;
    }
    Nearest column = firstColumn;
    for (std::int64_t x = left; x < right; ++x, column.Next()) {
      target[x] = PixelAt(source + static_cast<std::ptrdiff_t>(column.Place() * bytes));
    }
  }
}

void CopyPixels(const Canvas& canvas, const RECT& to, const Surface& source, POINT from) {
  const std::int64_t dx = std::int64_t{from.x} - to.left, dy = std::int64_t{from.y} - to.top;
  const std::int64_t left = std::max({std::int64_t{to.left}, canvas.Left(), -dx});
  const std::int64_t right =
      std::min({std::int64_t{to.right}, canvas.Right(), source.Width() - dx});
  const std::int64_t top = std::max({std::int64_t{to.top}, canvas.Top(), -dy});
  const std::int64_t bottom =
      std::min({std::int64_t{to.bottom}, canvas.Bottom(), source.Height() - dy});
  if (left >= right || top >= bottom) return;
  // Rows are taken in the order that reads each before it is overwritten; memmove does it within.
  const bool down = dy >= 0;
  for (std::int64_t i = 0; i < bottom - top; ++i) {
    const std::int64_t y = down ? top + i : bottom - 1 - i;
    std::memmove(canvas.Row(y) + left, source.Row(static_cast<int>(y + dy)) + left + dx,
                 static_cast<std::size_t>(right - left) * sizeof(std::uint32_t));
  }
}

}  // namespace gfx
