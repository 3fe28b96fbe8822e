// Window: shows models in a window that is the parent of the component's window. GLFW's on Linux, a system
// window on Windows. Host's thread, and one that reads models.

#pragma once

#include "glview/Options.h"

/// Shows the models until the user closes the window. Files dropped on the window replace them.
/// @throws ModelError if the models cannot be read; std::runtime_error without a display or a context
void ShowWindow(const Options& aOptions);
