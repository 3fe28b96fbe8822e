// LogOutput: the destination of the log's lines. Any thread.

#pragma once

#include <cstddef>

/// Copies the value of an environment variable, cut to aRoom. The text is empty if the variable is not set,
/// or if the program has rights that its caller lacks.
void ReadLogVariable(const char* aName, char* aText, std::size_t aRoom) noexcept;

/// Appends lines to a file, which is created if it does not exist.
/// @return false if it cannot be opened
bool OpenLogFile(const char* aPath) noexcept;
void CloseLogFile() noexcept;

/// Writes to the file; without a file to stderr, on Windows to the debugger. Never blocks.
/// @return false if the line was not written
bool WriteLogLine(const char* aLine, std::size_t aLength) noexcept;
