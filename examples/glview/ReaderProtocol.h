// ReaderProtocol: what the viewer and the process that reads a model have agreed on. Plain values.

#pragma once

#include <cstddef>

/// The command line: glview, this, the limit of memory in bytes, that of time in seconds, the model.
inline constexpr const char* kReaderCommand = "--read-for-viewer";
inline constexpr int kReaderArguments = 5;

// The reader's descriptors beside the standard ones.
inline constexpr int kResultFile = 3;    ///< where the model or, after kRefused, the reason goes
inline constexpr int kProgressPipe = 4;  ///< takes the share that is read, from 0 to 1, as a float each
inline constexpr int kFirstOther = 5;    ///< closed, as all that follow

/// How the reader ends.
enum ReaderStatus : int { kModelRead = 0, kModelRefused = 2, kNoMemory = 3 };

inline constexpr std::size_t kLongestReason = 1024;
