// Window: models in a window of GLFW's, which is the parent of the component's own. The host's thread, and
// one that reads models.

#pragma once

#include "glview/Options.h"

/// Shows the models, and whatever is dropped on the window in their place, until the user leaves.
/// @throws ModelError when the models can't be read; std::runtime_error when there is no display or no
/// context
void ShowWindow(const Options& aOptions);
