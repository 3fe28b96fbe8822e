// Window: the model in a window of GLFW's, which is the parent of the component's own. One thread, the
// host's.

#pragma once

#include "glview/Options.h"
#include "shared/model/Model.h"

/// Shows the model until the user leaves.
/// @throws std::runtime_error when there is no display or no context
void ShowWindow(const Model& aModel, const Options& aOptions);
