// Weak definitions that keep the layer linking while the fonts are not part of it: everything
// measures as cells.
#include "platform/gfx/context.h"
#include "platform/gfx/text_engine.h"

namespace gfx {

[[gnu::weak]] TextEngine& SystemText() { return CellText(); }
[[gnu::weak]] TextEngine& BuiltinText() { return CellText(); }

}  // namespace gfx
