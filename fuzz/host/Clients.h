// The clients of a run: a painter, a gauge and a capture, each with a script of operations that it goes
// through at every call. Made by any thread; their calls come on draw threads.

#pragma once

#include <span>
#include <vector>

#include "host/World.h"

using Script = std::vector<std::uint8_t>;

GLPtr<IGLPainter> MakePainter(World& aWorld, Script aScript);
GLPtr<IGLViewerGauge> MakeGauge(World& aWorld, Script aScript);
GLPtr<IGLCapture> MakeCapture(World& aWorld, Script aScript);
