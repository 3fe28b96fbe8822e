// NativeWindow: reads the X11 window id from SDL's system information. Host's thread.

#include "embed-sdl/NativeWindow.h"

#include <SDL_syswm.h>

ULONG_PTR NativeWindow(SDL_Window* aWindow) {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  const bool known = SDL_GetWindowWMInfo(aWindow, &info) == SDL_TRUE && info.subsystem == SDL_SYSWM_X11;
  return known ? static_cast<ULONG_PTR>(info.info.x11.window) : 0;
}
