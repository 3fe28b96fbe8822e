// Reading of files: opened by Unicode name, with 64-bit sizes. No state; any thread, one thread per file.

#pragma once

#include <gllib/GLPlatform.h>

#include <cstdio>

/// Opens a file for reading. Off Windows it does not wait for a writer of a pipe. The size of a pipe is 0.
/// @param aName the name; a name with an embedded zero is invalid. Trailing zeros are ignored.
/// @return the file, which the caller closes; null if it cannot be opened
std::FILE* OpenFileForReading(BSTR aName) noexcept;

/// Returns the size of a file in bytes; 0 if it is unknown. Leaves the position at the end.
std::uint64_t FileSize(std::FILE* aFile) noexcept;

/// Sets the position, in bytes from the start.
/// @return false on failure
bool SeekFile(std::FILE* aFile, std::uint64_t aPlace) noexcept;
