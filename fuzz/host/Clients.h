// Clients of a run. Painters and gauges run a script of operations at each call; captures take their answers
// from a script. Any thread creates them; draw threads call them.

#pragma once

#include <vector>

#include "host/World.h"

using Script = std::vector<std::uint8_t>;

GLPtr<IGLPainter> MakePainter(World& aWorld, Script aScript);
GLPtr<IGLViewerGauge> MakeGauge(World& aWorld, Script aScript);
GLPtr<IGLCapture> MakeCapture(World& aWorld, Script aScript);
