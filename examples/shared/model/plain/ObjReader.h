// ObjReader: models in Wavefront's OBJ format, with their materials. Any thread.

#pragma once

#include <filesystem>
#include <istream>
#include <vector>

#include "shared/model/Model.h"

/// Reads a model. The faces of one object or group with one material become one part. Corners without a
/// normal get a smooth one, from the faces of the part that meet there. Polygons must be convex.
/// @param aFolder folder of the material files and images
/// @throws ModelError with the line number, and any exception of aProgress
std::vector<Part> ReadObj(std::istream& aFile, const std::filesystem::path& aFolder,
                          const ReadProgress& aProgress = {});
