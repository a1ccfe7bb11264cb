// Windows on the screen.
#pragma once

#include <memory>
#include <string>

#include "platform/ui/front.h"

namespace app {

// The desktop as the current front, as long as it lives. Null, with the cause in `error`, where
// there is no display or the program was built without windows.
std::unique_ptr<ui::Front> OpenScreen(std::string& error);

// Runs until a window and what it owns have gone.
void RunWindow(HWND window);

}  // namespace app
