// Snapshot: one picture without a display, and picks in it. Host's thread.

#pragma once

#include <memory>

#include "glview/Options.h"
#include "shared/model/Model.h"

/// Prints the picked parts and writes the picture, if the options request them.
/// @throws std::runtime_error
void TakeSnapshot(std::shared_ptr<const Model> aModel, const Options& aOptions);
