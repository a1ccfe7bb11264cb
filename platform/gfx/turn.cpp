#include "platform/gfx/turn.h"

#include <algorithm>
#include <utility>

namespace gfx {
namespace {

constexpr std::int64_t kOne = std::int64_t{1} << 30;
constexpr std::int64_t kPi = 3373259426;  // π × 2^30

constexpr std::int64_t Scale(std::int64_t a, std::int64_t b) { return (a * b + kOne / 2) >> 30; }

// Series in x² for angles up to 45 degrees: the first term left out is below 2^-31.
constexpr std::int64_t SineSeries(std::int64_t x) {
  const std::int64_t square = Scale(x, x);
  std::int64_t sum = kOne - square / 72;
  sum = kOne - Scale(square, sum) / 42;
  sum = kOne - Scale(square, sum) / 20;
  sum = kOne - Scale(square, sum) / 6;
  return Scale(x, sum);
}
constexpr std::int64_t CosineSeries(std::int64_t x) {
  const std::int64_t square = Scale(x, x);
  std::int64_t sum = kOne - square / 90;
  sum = kOne - Scale(square, sum) / 56;
  sum = kOne - Scale(square, sum) / 30;
  sum = kOne - Scale(square, sum) / 12;
  return kOne - Scale(square, sum) / 2;
}

}  // namespace

Turn::Turn(LONG tenths) {
  const LONG turned = (tenths % 3600 + 3600) % 3600;
  const LONG quarters = turned / 900, rest = turned % 900;
  const bool low = rest <= 450;
  const std::int64_t angle = (low ? rest : 900 - rest) * kPi / 1800;
  std::int64_t cosine = CosineSeries(angle), sine = SineSeries(angle);
  if (!low) std::swap(cosine, sine);
  for (LONG i = 0; i < quarters; ++i) {
    std::swap(cosine, sine);
    cosine = -cosine;
  }
  cosine_ = static_cast<LONG>(cosine);
  sine_ = static_cast<LONG>(sine);
}

int Turn::Quarters() const {
  if (sine_ == 0) return cosine_ > 0 ? 0 : 2;
  if (cosine_ == 0) return sine_ > 0 ? 1 : 3;
  return -1;
}

Offset Turn::Apply(std::int64_t along, std::int64_t down) const {
  constexpr std::int64_t kLimit = std::int64_t{1} << 31;
  along = std::clamp(along, -kLimit, kLimit);
  down = std::clamp(down, -kLimit, kLimit);
  return {(along * cosine_ + down * sine_ + kOne / 2) >> 30,
          (down * cosine_ - along * sine_ + kOne / 2) >> 30};
}

POINT MovePoint(POINT from, Offset by) {
  const auto limited = [](std::int64_t value) {
    return static_cast<LONG>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
  };
  return {limited(from.x + by.x), limited(from.y + by.y)};
}

}  // namespace gfx
