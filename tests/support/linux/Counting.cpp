// Failing allocations per path, and the memory of the process.

#include "support/Counting.h"

#include <execinfo.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <fstream>

// Address range of the executable's code, from the linker.
extern "C" const char __executable_start, etext;

namespace {

constexpr std::uint16_t kMaximumLooks = 24;  // per place and fault

std::atomic<bool> g_bArmed{false}, g_bFailed{false};
std::array<std::atomic<std::uint16_t>, 4096> g_auLooks{};  // per place
std::array<std::atomic<std::uintptr_t>, 8192> g_auWays{};  // paths that have failed

bool IsOurs(const void* aCaller) noexcept { return aCaller >= &__executable_start && aCaller < &etext; }

/// Returns a number for the calls on the stack; never 0.
std::uintptr_t Way() noexcept {
  std::array<void*, 10> calls{};
  const int count = backtrace(calls.data(), static_cast<int>(calls.size()));
  std::uintptr_t way = 1;
  for (int i = 0; i < count; ++i)
    way = way * 31 + reinterpret_cast<std::uintptr_t>(calls[static_cast<std::size_t>(i)]);
  return way | 1;
}

/// Adds a path. @return false if it was added before
bool IsNew(std::uintptr_t aWay) noexcept {
  for (std::size_t i = aWay % g_auWays.size();; i = (i + 1) % g_auWays.size()) {
    std::uintptr_t there = 0;
    if (g_auWays[i].compare_exchange_strong(there, aWay)) return true;
    if (there == aWay) return false;
  }
}

bool IsLookedAt(const void* aCaller) noexcept {
  auto& looks = g_auLooks[reinterpret_cast<std::uintptr_t>(aCaller) % g_auLooks.size()];
  return looks < kMaximumLooks && looks++ < kMaximumLooks;
}

}  // namespace

bool AllocationFault::Is(const void* aCaller) noexcept {
  thread_local bool inside = false;  // inspecting the stack may allocate
  if (!g_bArmed.load(std::memory_order_relaxed) || g_bFailed || inside || !IsOurs(aCaller) ||
      !IsLookedAt(aCaller)) {
    return false;
  }
  inside = true;
  const bool fault = IsNew(Way()) && !g_bFailed.exchange(true);
  inside = false;
  return fault;
}

AllocationFault::AllocationFault() noexcept {
  for (auto& looks : g_auLooks) looks = 0;
  g_bFailed = false;
  g_bArmed = true;
}

AllocationFault::~AllocationFault() { g_bArmed = false; }

void AllocationFault::ForgetWays() noexcept {
  for (auto& way : g_auWays) way = 0;
}

bool AllocationFault::HasFailed() const noexcept { return g_bFailed; }

long ResidentKiB() {
  long size = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident * 4;
}
