// Progress: progress of long work on a model. Any thread.

#pragma once

#include <atomic>

struct Progress {
  static constexpr float kIdle = -1;

  std::atomic<float> reading{kIdle};    ///< reading files, from 0 to 1; set by the host
  std::atomic<float> preparing{kIdle};  ///< compiling lists, from 0 to 1; set by the painter
};
