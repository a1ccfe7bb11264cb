// Weak definitions that keep the layer linking while the raster driver and its fonts are not part
// of it: nothing is drawn, everything measures as cells.
#include "platform/gfx/context.h"
#include "platform/gfx/driver/null.h"
#include "platform/gfx/text_engine.h"

namespace gfx {

[[gnu::weak]] std::unique_ptr<Driver> MakeRasterDriver(Surface&, TextEngine&) {
  return std::make_unique<NullDriver>();
}
[[gnu::weak]] TextEngine& SystemText() { return CellText(); }
[[gnu::weak]] TextEngine& BuiltinText() { return CellText(); }

}  // namespace gfx
