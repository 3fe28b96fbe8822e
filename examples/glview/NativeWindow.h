// The window system's own id of a GLFW window. In a file of its own, as X11's headers take common names.

#pragma once

#include <gllib/GLLib.h>

struct GLFWwindow;

ULONG_PTR NativeWindow(GLFWwindow* aWindow);
