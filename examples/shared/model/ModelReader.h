// ModelReader: the parts of a model file, by whichever reader the program is built with: the assimp library's
// in assimp/, or a small one of OBJ and STL files in plain/. Any thread.

#pragma once

#include <string>
#include <vector>

#include "shared/model/Model.h"

/// Reads a file that exists. Identifiers, and names where the file has none, are the caller's to give.
/// @throws ModelError without the file's name, and what aProgress throws
std::vector<Part> ReadParts(const std::string& aPath, const ReadProgress& aProgress);

/// Whether a file's name has an ending of models.
bool IsModelName(const std::string& aName);

/// The files that can be read, in the words of the help text.
extern const char* const kReadableFiles;
