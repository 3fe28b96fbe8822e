// The window system's own id of an SDL window. In a file of its own, as X11's headers take common names.

#pragma once

#include <SDL.h>
#include <gllib/GLLib.h>

/// @return 0 when the window isn't one of an X server
ULONG_PTR NativeWindow(SDL_Window* aWindow);
