// Window: shows models in a window that is the parent of the component's window: a window of GLFW on Linux,
// of the system on Windows. Host's thread; other threads read the models.

#pragma once

#include "glview/Options.h"

/// Shows the models until the user closes the window. Files dropped on the window replace them.
/// @throws ModelError if the models cannot be read; std::runtime_error without a display or a context
void ShowWindow(const Options& aOptions);
