// ModelSet: several files read as one model. Any thread.

#pragma once

#include <string>
#include <vector>

#include "glview/ReadLimits.h"
#include "shared/model/Model.h"

/// Reads files and arranges their models in rows. Each model is scaled to the same size and centred in its
/// cell. A single model keeps its coordinates.
/// @param aLimits   for each file
/// @param aTogether keeps the models at their own coordinates instead
/// @throws ModelError, and any exception of aProgress
Model LoadModels(const std::vector<std::string>& aPaths, const ReadLimits& aLimits, bool aTogether,
                 const ReadProgress& aProgress = {});
