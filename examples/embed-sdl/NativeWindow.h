// NativeWindow: the window system's id of an SDL window. It has a separate source file because X11's headers
// define macros with common names.

#pragma once

#include <SDL.h>
#include <gllib/GLLib.h>

/// @return 0 if the window is no X11 window
ULONG_PTR NativeWindow(SDL_Window* aWindow);
