#include "platform/gfx/mapping.h"

#include <algorithm>
#include <limits>

namespace gfx {
namespace {

constexpr std::int64_t kTwipsPerInch = 1440;

}  // namespace

LONG Saturate(std::int64_t value) {
  return static_cast<LONG>(std::clamp<std::int64_t>(value, std::numeric_limits<LONG>::min(),
                                                    std::numeric_limits<LONG>::max()));
}

std::int64_t ScaleRounded(std::int64_t value, std::int64_t numerator, std::int64_t denominator) {
  const std::int64_t product = value * numerator;
  const std::int64_t half = denominator / 2;
  // An odd denominator has no exact half, so adding its floor never rounds up too early.
  return (product < 0 ? product - half : product + half) / denominator;
}

RECT Ordered(const RECT& box) {
  return {std::min(box.left, box.right), std::min(box.top, box.bottom),
          std::max(box.left, box.right), std::max(box.top, box.bottom)};
}

RECT Intersection(const RECT& a, const RECT& b) {
  const RECT box{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                 std::min(a.bottom, b.bottom)};
  return IsEmpty(box) ? RECT{0, 0, 0, 0} : box;
}

bool IsEmpty(const RECT& box) { return box.left >= box.right || box.top >= box.bottom; }

POINT Mapping::ToDevice(POINT logical) const {
  std::int64_t x = logical.x;
  std::int64_t y = logical.y;
  if (mode == MM_TWIPS) {
    x = ScaleRounded(x, dpi, kTwipsPerInch);
    y = -ScaleRounded(y, dpi, kTwipsPerInch);
  }
  return {Saturate(origin.x + x), Saturate(origin.y + y)};
}

POINT Mapping::ToLogical(POINT device) const {
  std::int64_t x = std::int64_t{device.x} - origin.x;
  std::int64_t y = std::int64_t{device.y} - origin.y;
  if (mode == MM_TWIPS) {
    x = ScaleRounded(x, kTwipsPerInch, dpi);
    y = -ScaleRounded(y, kTwipsPerInch, dpi);
  }
  return {Saturate(x), Saturate(y)};
}

RECT Mapping::ToDevice(const RECT& logical) const {
  const POINT a = ToDevice(POINT{logical.left, logical.top});
  const POINT b = ToDevice(POINT{logical.right, logical.bottom});
  return Ordered({a.x, a.y, b.x, b.y});
}

LONG Mapping::LengthToDevice(LONG logical) const {
  return mode == MM_TWIPS ? Saturate(ScaleRounded(logical, dpi, kTwipsPerInch)) : logical;
}

LONG Mapping::LengthToLogical(LONG device) const {
  return mode == MM_TWIPS ? Saturate(ScaleRounded(device, kTwipsPerInch, dpi)) : device;
}

}  // namespace gfx
