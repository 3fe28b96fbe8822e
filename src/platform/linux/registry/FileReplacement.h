// Replacement of a whole file: after a failure, or a crash at any moment, either the old or the new file is
// there, complete. Any thread; the caller keeps other writers away.

#pragma once

#include <string>

#include "platform/Registry.h"

/// Writes a text to a file. A link to the file stays one, and the file keeps its permissions and owner.
/// @return ERROR_SUCCESS once the file is on the disk; ERROR_ACCESS_DENIED or ERROR_WRITE_FAULT: the old file
///         stays. Only where the disk refuses to store the new name, at the very end, the new file may be in
///         place after ERROR_WRITE_FAULT.
LSTATUS ReplaceFile(const std::string& aPath, const std::string& aText);
