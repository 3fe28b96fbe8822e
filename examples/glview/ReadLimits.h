// ReadLimits: how much memory and time the reading of a model may take. Plain values.

#pragma once

#include <cstdint>

struct ReadLimits {
  std::uint64_t mebibytes = 0;  ///< 0: half of the memory that is available
  unsigned seconds = 0;         ///< 0: by the size of the file
};
