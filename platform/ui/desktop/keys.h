// Keys of SDL as VK_ codes.
#pragma once

#include "platform/ui/user.h"

namespace ui {

// `symbol` is an SDL_Keycode. 0 for keys that no window asks for.
WORD KeyOfSymbol(int symbol);

}  // namespace ui
