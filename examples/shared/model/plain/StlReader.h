// StlReader: models in the STL format, as text or binary. Any thread.

#pragma once

#include <istream>
#include <vector>

#include "shared/model/Model.h"

/// Reads a model. Each solid becomes one part with flat facets. A normal 0, 0, 0 is replaced by that of the
/// corners.
/// @throws ModelError, and any exception of aProgress
std::vector<Part> ReadStl(std::istream& aFile, const ReadProgress& aProgress = {});
