// Progress: how far work on a model has come that takes its time. Any thread.

#pragma once

#include <atomic>

struct Progress {
  static constexpr float kIdle = -1;

  std::atomic<float> reading{kIdle};    ///< of files, from 0 to 1; set by the host
  std::atomic<float> preparing{kIdle};  ///< of lists, from 0 to 1; set by the painter
};
