// ModelReader: reads the parts of a model file. The build selects the reader: the assimp library in assimp/,
// or a small one for OBJ and STL files in plain/. Any thread.

#pragma once

#include <string>
#include <vector>

#include "shared/model/Model.h"

/// Reads an existing file. The caller sets the identifiers, and the names that the file does not contain.
/// @throws ModelError without the file's name, and any exception of aProgress
std::vector<Part> ReadParts(const std::string& aPath, const ReadProgress& aProgress);

/// Returns whether a file name has the extension of a model format.
bool IsModelName(const std::string& aName);

/// The supported formats, for the help text.
extern const char* const kReadableFiles;
