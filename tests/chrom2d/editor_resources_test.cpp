// What the load leaves for all path editors.
#include "elugraph/chrom2d/editor_resources.h"

#include <gtest/gtest.h>

#include <set>

#include "embedded/controls/host_module.h"
#include "platform/ui/resources.h"

namespace {

std::uint32_t PixelAt(const ui::Image& image, int x, int y) {
  return image.argb.at(static_cast<std::size_t>(y) * image.width + x);
}

TEST(EditorResources, AreThereBeforeAnyWindow) {
  EXPECT_EQ(EditorTemplate().module, embedded::HostModule());
  EXPECT_EQ(Editor().dragX, 4);
  EXPECT_EQ(Editor().dragY, 4);
}

TEST(EditorResources, BarsPointAtTheirMiddleAndAreAlikeInBothDirections) {
  for (const auto& [extent, middle] : {std::pair{32, 15}, std::pair{16, 8}}) {
    const ui::Image h = ui::ImageOf(Editor().splitH, extent);
    const ui::Image v = ui::ImageOf(Editor().splitV, extent);
    ASSERT_EQ(std::pair(h.width, h.height), std::pair(extent, extent));
    ASSERT_EQ(std::pair(v.width, v.height), std::pair(extent, extent));
    for (const ui::Image& image : {h, v}) {
      EXPECT_EQ(image.hotSpot.x, middle);
      EXPECT_EQ(image.hotSpot.y, middle);
      const std::set<std::uint32_t> colors(image.argb.begin(), image.argb.end());
      EXPECT_EQ(colors, (std::set<std::uint32_t>{0, 0xFF000000, 0xFFFFFFFF}));
    }
    for (int y = 0; y < extent; ++y) {
      for (int x = 0; x < extent; ++x) {
        EXPECT_EQ(PixelAt(h, x, y), PixelAt(v, y, x)) << x << ", " << y;
        const int mirrored = 2 * middle - x;
        if (mirrored >= 0 && mirrored < extent) {
          EXPECT_EQ(PixelAt(h, x, y), PixelAt(h, mirrored, y)) << x << ", " << y;
        }
      }
    }
  }
}

TEST(EditorResources, CrossHairsReachFromEdgeToEdge) {
  const ui::Image cross = ui::ImageOf(Editor().cross, 32);
  ASSERT_EQ(std::pair(cross.width, cross.height), std::pair(32, 32));
  EXPECT_EQ(cross.hotSpot.x, 15);
  EXPECT_EQ(cross.hotSpot.y, 15);
  for (const int end : {0, 31}) {
    EXPECT_EQ(PixelAt(cross, end, 15), 0xFF000000);
    EXPECT_EQ(PixelAt(cross, 15, end), 0xFF000000);
    EXPECT_EQ(PixelAt(cross, end, end), 0U);
  }
}

}  // namespace
