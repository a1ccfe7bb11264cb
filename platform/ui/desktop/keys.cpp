#include "platform/ui/desktop/keys.h"

#include <SDL_keycode.h>

namespace ui {

WORD KeyOfSymbol(int symbol) {
  if (symbol >= SDLK_a && symbol <= SDLK_z) return static_cast<WORD>(symbol - SDLK_a + 'A');
  if (symbol >= SDLK_0 && symbol <= SDLK_9) return static_cast<WORD>(symbol - SDLK_0 + '0');
  switch (symbol) {
    case SDLK_RETURN:
    case SDLK_KP_ENTER:
      return VK_RETURN;
    case SDLK_ESCAPE:
      return VK_ESCAPE;
    case SDLK_TAB:
      return VK_TAB;
    case SDLK_SPACE:
      return VK_SPACE;
    case SDLK_BACKSPACE:
      return VK_BACK;
    case SDLK_DELETE:
      return VK_DELETE;
    case SDLK_LEFT:
      return VK_LEFT;
    case SDLK_RIGHT:
      return VK_RIGHT;
    case SDLK_UP:
      return VK_UP;
    case SDLK_DOWN:
      return VK_DOWN;
    case SDLK_HOME:
      return VK_HOME;
    case SDLK_END:
      return VK_END;
    case SDLK_PAGEUP:
      return VK_PRIOR;
    case SDLK_PAGEDOWN:
      return VK_NEXT;
    case SDLK_LSHIFT:
    case SDLK_RSHIFT:
      return VK_SHIFT;
    case SDLK_LCTRL:
    case SDLK_RCTRL:
      return VK_CONTROL;
    case SDLK_LALT:
    case SDLK_RALT:
      return VK_MENU;
    default:
      return 0;
  }
}

}  // namespace ui
