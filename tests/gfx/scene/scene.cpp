// Draws seeded random scenes with the raster driver and the built-in font and prints one hash of
// all their pixels. Built by scripts/same_pixels with several compilers, straight from the sources.
#include <cinttypes>
#include <cstdio>

#include "platform/gfx/driver/raster.h"
#include "platform/gfx/surface.h"
#include "platform/gfx/text_engine.h"
#include "tests/gfx/scene/random_shapes.h"

int main() {
  std::uint64_t all = 0xCBF29CE484222325u;
  for (unsigned seed = 0; seed < 60; ++seed) {
    gfx::Surface surface(240, 180);
    const auto driver = gfx::MakeRasterDriver(surface, gfx::BuiltinText());
    RandomShapes shapes(seed);
    for (int i = 0; i < 150; ++i) {
      const RECT clip = shapes.Box();
      shapes.Draw(*driver, &surface, i % 3 == 0 ? &clip : nullptr);
    }
    all = (all ^ surface.Hash()) * 0x100000001B3u;
  }
  std::printf("%016" PRIx64 "\n", all);
}
