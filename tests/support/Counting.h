// Counting of heap allocations: the test executables replace the global operator new, which counts for each
// thread apart.

#pragma once

#include <cstddef>

/// How many times the calling thread has called operator new.
std::size_t AllocationsOfThisThread() noexcept;

/// Calls a function. @return how many times it allocated
template <class Function>
std::size_t CountAllocations(Function&& aFunction) {
  const std::size_t before = AllocationsOfThisThread();
  aFunction();
  return AllocationsOfThisThread() - before;
}
