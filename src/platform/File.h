// Files that are read: opened by their whole Unicode name, with sizes in 64 bits. Owns no state; any thread,
// each file on its own.

#pragma once

#include <gllib/GLPlatform.h>

#include <cstdio>

/// Opens a file for reading. Waits for nobody: a pipe opens too, but has no size and nothing to read.
/// @param aName the name; one that holds a zero before its end names no file
/// @return the file, the caller's to close; null when there is none such
std::FILE* OpenFileForReading(BSTR aName) noexcept;

/// The size of a file in bytes, 0 when it has none that can be told. Leaves the file at its end.
std::uint64_t FileSize(std::FILE* aFile) noexcept;

/// Goes to a place counted from the file's start. @return false when it can't
bool SeekFile(std::FILE* aFile, std::uint64_t aPlace) noexcept;
