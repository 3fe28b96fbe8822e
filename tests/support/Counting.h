// Counting of heap allocations, their failing, and the memory of the process: the test executables replace
// the global operator new, which counts for each thread apart.

#pragma once

#include <cstddef>

/// How many times the calling thread has called operator new.
std::size_t AllocationsOfThisThread() noexcept;

/// What the process holds in memory.
long ResidentKiB();

/// A heap that is used up for the calling thread: after so many more calls its operator new fails, until the
/// object's end. One at a time a thread.
class ExhaustedHeap {
 public:
  explicit ExhaustedHeap(std::size_t aAllocationsLeft) noexcept;
  ~ExhaustedHeap();
  ExhaustedHeap(const ExhaustedHeap&) = delete;
  ExhaustedHeap& operator=(const ExhaustedHeap&) = delete;
};

/// One allocation fails: the first, on whichever thread, that this executable's own code comes to on a way on
/// which none has failed yet, a way being the last few calls. So a loop over the same work tries each way
/// once. What the driver and the standard library's compiled part allocate isn't counted. One at a time.
/// Linux.
class AllocationFault {
 public:
  AllocationFault() noexcept;
  ~AllocationFault();
  AllocationFault(const AllocationFault&) = delete;
  AllocationFault& operator=(const AllocationFault&) = delete;

  /// Starts over: none has failed.
  static void ForgetWays() noexcept;
  /// Whether the allocation that aCaller asks for is the one to fail.
  static bool Is(const void* aCaller) noexcept;
  /// Whether it has come.
  bool HasFailed() const noexcept;
};
