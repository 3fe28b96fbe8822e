// NativeWindow: reads the X11 window id. Host's thread.

#include "glview/NativeWindow.h"

#define GLFW_EXPOSE_NATIVE_X11
#include <GLFW/glfw3.h>
#include <GLFW/glfw3native.h>

ULONG_PTR NativeWindow(GLFWwindow* aWindow) { return static_cast<ULONG_PTR>(glfwGetX11Window(aWindow)); }
