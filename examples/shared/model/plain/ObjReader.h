// ObjReader: models in Wavefront's OBJ format, with their materials. Any thread.

#pragma once

#include <filesystem>
#include <istream>
#include <vector>

#include "shared/model/Model.h"

/// Reads a model: one part for each object or group and each material in it. Corners without a normal get a
/// smooth one, from the faces of the part that meet there; polygons are taken as convex.
/// @param aFolder where material files and images are
/// @throws ModelError that tells the line, and what aProgress throws
std::vector<Part> ReadObj(std::istream& aFile, const std::filesystem::path& aFolder,
                          const ReadProgress& aProgress = {});
