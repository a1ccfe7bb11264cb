#include <algorithm>
#include <cstring>
#include <vector>

#include "tests/gfx/raster_fixture.h"
#include "tests/support/case_name.h"

namespace {

struct Storage {
  const char* name;
  int bytesPerPixel;
  bool bottomUp;
};
class ImageStorage : public testing::TestWithParam<Storage> {
 protected:
  static constexpr int kWidth = 11, kHeight = 7;
  ImageStorage() : bytes_(kHeight * kStride) {
    for (std::size_t i = 0; i < bytes_.size(); ++i) bytes_[i] = static_cast<BYTE>(i * 37 + 5);
  }
  gfx::ImageView View() const {
    const auto& [name, size, bottomUp] = GetParam();
    return {bytes_.data() + (bottomUp ? (kHeight - 1) * kStride : 0), bottomUp ? -kStride : kStride,
            kWidth, kHeight, size};
  }
  COLORREF At(std::int64_t x, std::int64_t y) const {
    const auto& [name, size, bottomUp] = GetParam();
    const std::int64_t row = bottomUp ? kHeight - 1 - y : y;
    const BYTE* pixel = bytes_.data() + row * kStride + x * size;
    return RGB(pixel[2], pixel[1], pixel[0]);
  }
  static constexpr std::ptrdiff_t kStride = 48;

 private:
  std::vector<BYTE> bytes_;
};

TEST_P(ImageStorage, IsShownByItsNearestPixels) {
  Seeded random(51);
  for (int i = 0; i < 400; ++i) {
    const LONG left = random(0, kWidth - 1), top = random(0, kHeight - 1);
    RECT from{left, top, random(left + 1, kWidth), random(top + 1, kHeight)};
    const LONG reach = i % 4 == 0 ? 1 << 30 : 90;
    RECT to{random(-reach, 60), random(-reach, 40), random(0, reach), random(0, reach)};
    if (i % 3 == 0) to.right = to.left + from.right - from.left;  // rows as they are
    const POINT corner = random.Point(-20, 70);
    if (to.left >= to.right || to.top >= to.bottom) continue;
    Picture got;
    const bool plain = i % 4 == 1;  // the whole image, pixel by pixel
    if (plain) {
      from = {0, 0, kWidth, kHeight};
      to = {corner.x, corner.y, corner.x + kWidth, corner.y + kHeight};
      got.driver->Dib(corner, View(), nullptr);
    } else {
      got.driver->Stretch(to, View(), from, nullptr);
    }
    for (LONG y = 0; y < 48; ++y) {
      for (LONG x = 0; x < 64; ++x) {
        const bool inside = x >= to.left && x < to.right && y >= to.top && y < to.bottom;
        const auto place = [](std::int64_t at, std::int64_t extent, std::int64_t source) {
          return (2 * at + 1) * source / (2 * extent);
        };
        const COLORREF wanted =
            !inside
                ? kWhite
                : At(from.left + place(std::int64_t{x} - to.left, std::int64_t{to.right} - to.left,
                                       from.right - from.left),
                     from.top + place(std::int64_t{y} - to.top, std::int64_t{to.bottom} - to.top,
                                      from.bottom - from.top));
        ASSERT_EQ(got.surface.Pixel(x, y), wanted) << x << ',' << y << " drawing " << i;
      }
    }
  }
}

const Storage kFormsImageStorage[] = {{"TopDown24", 3, false},
                                      {"BottomUp24", 3, true},
                                      {"TopDown32", 4, false},
                                      {"BottomUp32", 4, true}};
INSTANTIATE_TEST_SUITE_P(Forms, ImageStorage, testing::ValuesIn(kFormsImageStorage), CaseName());

// Also onto itself: what is copied is the picture before the call.
TEST(Blits, CopyThePictureAsItWas) {
  Seeded random(61);
  for (int i = 0; i < 600; ++i) {
    Picture got;
    for (int y = 0; y < 48; ++y) {
      for (int x = 0; x < 64; ++x) got.surface.Row(y)[x] = static_cast<std::uint32_t>(y * 64 + x);
    }
    const gfx::Surface before = got.surface, other = before;
    const bool own = i % 3 != 0, far = i % 5 == 0;
    const POINT at = far ? random.Point(INT32_MIN, 10) : random.Point(-20, 60);
    const RECT to{at.x, at.y, far ? random(0, INT32_MAX) : at.x + random(0, 60),
                  far ? random(0, INT32_MAX) : at.y + random(0, 60)};
    const POINT from = far ? POINT{at.x + 3, at.y} : random.Point(-20, 60);
    got.driver->Blit(to, own ? &got.surface : &other, from, nullptr);
    for (LONG y = 0; y < 48; ++y) {
      for (LONG x = 0; x < 64; ++x) {
        const std::int64_t sx = std::int64_t{x} - to.left + from.x;
        const std::int64_t sy = std::int64_t{y} - to.top + from.y;
        const bool copied = x >= to.left && x < to.right && y >= to.top && y < to.bottom &&
                            sx >= 0 && sy >= 0 && sx < 64 && sy < 48;
        const auto wanted = static_cast<std::uint32_t>(copied ? sy * 64 + sx : y * 64 + x);
        ASSERT_EQ(got.surface.Row(y)[x], wanted) << x << ',' << y << " copy " << i;
      }
    }
  }
}

}  // namespace
