// Replacement of a whole file. After a failure or a crash either the old or the new file exists, complete.
// Any thread; the caller excludes other writers.

#pragma once

#include <string>

#include "platform/Registry.h"

/// Writes a text to a file. Keeps a link to the file, its permissions and its owner.
/// @return ERROR_SUCCESS once the file is on the disk. After ERROR_ACCESS_DENIED or ERROR_WRITE_FAULT the old
///         file remains. The new file may remain after ERROR_WRITE_FAULT only if the final sync of the
///         directory failed.
LSTATUS ReplaceFile(const std::string& aPath, const std::string& aText);
