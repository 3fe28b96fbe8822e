// Snapshot: one picture with no display, and picks in it.

#pragma once

#include <memory>

#include "glview/Options.h"
#include "shared/model/Model.h"

/// Prints what is picked and writes the picture, as far as the options ask for either.
/// @throws std::runtime_error
void TakeSnapshot(std::shared_ptr<const Model> aModel, const Options& aOptions);
