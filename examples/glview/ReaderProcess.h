// ReaderProcess: reads a model in a separate process. A crash of the reader, for example by a damaged file,
// does not end the viewer. On Windows models are read in the viewer's process. Any thread.

#pragma once

#include <string>

#include "glview/ReadLimits.h"
#include "shared/model/Model.h"

/// Reads a model as LoadModel does, within limits.
/// @throws ModelError, also if the reader exceeds a limit or crashes; any exception of aProgress
Model LoadModelWithin(const ReadLimits& aLimits, const std::string& aPath, const ReadProgress& aProgress);

/// Runs the reader's side if LoadModelWithin has started this process, and does not return then. Returns at
/// once in the viewer itself.
void RunReader(int argc, const char* const* argv);
