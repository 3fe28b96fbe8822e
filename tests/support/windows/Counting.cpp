// The memory of the process. No allocation fails on Windows.

#include "support/Counting.h"

#include <windows.h>

#include <psapi.h>

bool AllocationFault::Is(const void*) noexcept { return false; }

long ResidentKiB() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
  return static_cast<long>(counters.WorkingSetSize / 1024);
}
