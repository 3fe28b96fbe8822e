// ReaderProtocol: the protocol between the viewer and the process that reads a model. Plain values.

#pragma once

#include <cstddef>

/// First argument of the reader. The next arguments are the memory limit in bytes, the time limit in seconds
/// and the path of the model.
inline constexpr const char* kReaderCommand = "--read-for-viewer";
inline constexpr int kReaderArguments = 5;  ///< with the program's name

// File descriptors of the reader, besides the standard ones.
inline constexpr int kResultFile = 3;    ///< receives the model or, after kModelRefused, the reason
inline constexpr int kProgressPipe = 4;  ///< receives the progress from 0 to 1, one float each time
inline constexpr int kFirstOther = 5;    ///< closed in the reader, with all higher descriptors

/// Exit status of the reader.
enum ReaderStatus : int { kModelRead = 0, kModelRefused = 2, kNoMemory = 3 };

inline constexpr std::size_t kLongestReason = 1024;
