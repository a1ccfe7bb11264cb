#include "platform/gfx/surface.h"

#include <gtest/gtest.h>

namespace {

TEST(Surface, ExtentsAreLimited) {
  EXPECT_EQ(gfx::Surface(-3, 5).Width(), 0);
  gfx::Surface huge(1 << 20, 1 << 20);
  EXPECT_EQ(huge.Width() + huge.Height(), 0);
  EXPECT_EQ(gfx::Surface(2, 2).Pixel(2, 0), 0u);
}

TEST(Surface, HashSeesEveryChannelAndPlace) {
  gfx::Surface surface(2, 1, RGB(1, 2, 3));
  // FNV-1a of the six bytes 03 02 01 03 02 01.
  EXPECT_EQ(surface.Hash(), 0x2122A2E06473EB45u);
}

}  // namespace
