#include "platform/gfx/surface.h"

#include <gtest/gtest.h>

namespace {

TEST(Surface, ExtentsAreLimited) {
  EXPECT_EQ(gfx::Surface(-3, 5).Width(), 0);
  gfx::Surface huge(1 << 20, 1 << 20);
  EXPECT_EQ(huge.Width() + huge.Height(), 0);
  EXPECT_EQ(gfx::Surface(2, 2).Pixel(2, 0), 0u);
}

}  // namespace
