#include "app/screen.h"

#ifdef ELUGRAPH_DESKTOP
#include "platform/ui/desktop/desktop.h"
#endif

namespace app {

std::unique_ptr<ui::Front> OpenScreen(std::string& error) {
#ifdef ELUGRAPH_DESKTOP
  return ui::Desktop::Open(error);
#else
  error = "this program was built without SDL 2, which windows need";
  return nullptr;
#endif
}

void RunWindow(HWND window) {
  ui::RunUntil([window] { return !IsWindow(window); });
}

}  // namespace app
