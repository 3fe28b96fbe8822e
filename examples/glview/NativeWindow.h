// NativeWindow: the window system's id of a GLFW window. It has a separate source file because X11's headers
// define macros with common names.

#pragma once

#include <gllib/GLLib.h>

struct GLFWwindow;

ULONG_PTR NativeWindow(GLFWwindow* aWindow);
