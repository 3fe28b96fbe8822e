// StlReader: models in the STL format, as text or binary. Any thread.

#pragma once

#include <istream>
#include <vector>

#include "shared/model/Model.h"

/// Reads a model: one part for each solid. Facets are flat; one whose normal is missing gets that of its
/// corners.
/// @throws ModelError, and what aProgress throws
std::vector<Part> ReadStl(std::istream& aFile, const ReadProgress& aProgress = {});
