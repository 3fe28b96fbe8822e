// ReaderProcess: reads a model in a separate process. A damaged file or a crash of the reader does not end
// the viewer. On Windows models are read in the viewer's process. Any thread.

#pragma once

#include <optional>
#include <string>

#include "glview/ReadLimits.h"
#include "shared/model/Model.h"

/// Reads a model as LoadModel does, within limits.
/// @throws ModelError, also if the reader exceeds a limit or crashes; any exception of aProgress
Model LoadModelWithin(const ReadLimits& aLimits, const std::string& aPath, const ReadProgress& aProgress);

/// Runs the reader's side if LoadModelWithin has started this process.
/// @return the exit status; no value in the viewer itself
std::optional<int> RunReader(int argc, const char* const* argv);
