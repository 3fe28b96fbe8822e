// ReadLimits: limits of memory and time for reading a model. Plain values.

#pragma once

#include <cstdint>

struct ReadLimits {
  std::uint64_t mebibytes = 0;  ///< 0: half of the available memory
  unsigned seconds = 0;         ///< 0: depends on the size of the file
};
