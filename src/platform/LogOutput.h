// LogOutput: where the lines of the log go. Any thread.

#pragma once

#include <cstddef>

/// Copies an environment variable, cut to the room. Empty if it is not set, and in a program with rights that
/// its caller lacks.
void ReadLogVariable(const char* aName, char* aText, std::size_t aRoom) noexcept;

/// Sends the lines to a file, at its end. It is created if it does not exist. @return false if it cannot be
/// opened
bool OpenLogFile(const char* aPath) noexcept;
void CloseLogFile() noexcept;

/// Writes to the file; without one to stderr, on Windows to the debugger. Never waits.
/// @return false if the line was not taken
bool WriteLogLine(const char* aLine, std::size_t aLength) noexcept;
