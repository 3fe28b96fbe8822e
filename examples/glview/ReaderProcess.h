// ReaderProcess: reads a model in a process of its own, so that neither a damaged file nor a fault of a
// reader takes the viewer with it. On Windows models are read in the viewer's process. Any thread.

#pragma once

#include <optional>
#include <string>

#include "glview/ReadLimits.h"
#include "shared/model/Model.h"

/// Reads a model as LoadModel does, within limits.
/// @throws ModelError also when the reader takes too much or crashes; what aProgress throws
Model LoadModelWithin(const ReadLimits& aLimits, const std::string& aPath, const ReadProgress& aProgress);

/// Runs the reader's side, when the command line is one that LoadModelWithin starts.
/// @return the exit status; none in the viewer itself
std::optional<int> RunReader(int argc, const char* const* argv);
