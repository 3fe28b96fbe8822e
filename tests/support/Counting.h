// Counting and failing of heap allocations, and the memory of the process. The test executables replace the
// global operator new, which counts per thread.

#pragma once

#include <cstddef>

/// Returns the number of successful calls of operator new on the calling thread.
std::size_t AllocationsOfThisThread() noexcept;

/// Returns the resident memory of the process.
long ResidentKiB();

/// A heap that is exhausted for the calling thread: operator new fails after a number of further calls, until
/// the object is destroyed. One object per thread.
class ExhaustedHeap {
 public:
  explicit ExhaustedHeap(std::size_t aAllocationsLeft) noexcept;
  ~ExhaustedHeap();
  ExhaustedHeap(ExhaustedHeap&&) = delete;
};

/// One failing allocation of this executable's code, on any thread. The first allocation on a path that has
/// not failed before fails; a path is the last few calls on the stack. A loop over the same work therefore
/// fails each path once. Allocations of the driver and of the standard library's compiled part never fail.
/// One object at a time. Linux.
class AllocationFault {
 public:
  AllocationFault() noexcept;
  ~AllocationFault();
  AllocationFault(AllocationFault&&) = delete;

  /// Clears the set of failed paths.
  static void ForgetWays() noexcept;
  /// Returns whether the allocation by aCaller must fail.
  static bool Is(const void* aCaller) noexcept;
  /// Returns whether the allocation has failed.
  bool HasFailed() const noexcept;
};
