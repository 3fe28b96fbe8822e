// Replacement of a whole file. After a failure or a crash either the old or the new file exists, complete.
// Any thread; the caller excludes other writers.

#pragma once

#include <string>

#include "platform/Registry.h"

/// Writes a text to a file. If the path is a link, replaces the file that it refers to. Keeps the
/// permissions, and the owner if the process may set it.
/// @return ERROR_SUCCESS once the file is on the disk. After ERROR_ACCESS_DENIED or ERROR_WRITE_FAULT the old
///         file is unchanged. Exception: if only the final sync of the directory failed, the new file is in
///         place.
LSTATUS ReplaceFile(const std::string& aPath, const std::string& aText);
