// LogOutput: the destination of the log's lines. Any thread.

#pragma once

#include <cstddef>

/// Copies the value of an environment variable to a text of aRoom bytes. A value that is too long is cut; on
/// Windows the text is then empty. The text is also empty if the variable is not set. Off Windows it is empty
/// if the program has rights that its caller lacks.
void ReadLogVariable(const char* aName, char* aText, std::size_t aRoom) noexcept;

/// Appends lines to a file, which is created if it does not exist.
/// @return false if it cannot be opened
bool OpenLogFile(const char* aPath) noexcept;
void CloseLogFile() noexcept;

/// Returns whether lines have a destination: without a file, an open stderr.
bool HasLogOutput() noexcept;

/// Writes to the file; without a file to stderr, on Windows to the debugger. Never blocks.
/// @return false if the line was not written
bool WriteLogLine(const char* aLine, std::size_t aLength) noexcept;
