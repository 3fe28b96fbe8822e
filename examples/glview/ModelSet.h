// ModelSet: several files read as one model. Any thread.

#pragma once

#include <string>
#include <vector>

#include "glview/ReadLimits.h"
#include "shared/model/Model.h"

/// Reads files, and lays their models side by side in rows, each as large as the others and in its own
/// middle.
/// @param aLimits   of each file
/// @param aTogether leaves them where their coordinates put them instead
/// @throws ModelError, and what aProgress throws
Model LoadModels(const std::vector<std::string>& aPaths, const ReadLimits& aLimits, bool aTogether,
                 const ReadProgress& aProgress = {});
