// The counting operator new. Each thread has a counter of its own.

#include "support/Counting.h"

#include <execinfo.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <new>

// Where the executable's own code lies, by the linker.
extern "C" const char __executable_start, etext;

namespace {

constexpr std::size_t kUnlimited = SIZE_MAX;

thread_local std::size_t t_uAllocations = 0;
thread_local std::size_t t_uLastAllocation = kUnlimited;

constexpr std::uint16_t kMostLooks = 24;  // at a place that allocates, for each fault: a loop comes by often

std::atomic<bool> g_bArmed{false}, g_bFailed{false};
std::array<std::atomic<std::uint16_t>, 4096> g_auLooks{};  // by place
std::array<std::atomic<std::uintptr_t>, 8192> g_auWays{};  // that have failed

bool IsOurs(const void* aCaller) noexcept { return aCaller >= &__executable_start && aCaller < &etext; }

/// The calls that led here, as one number that isn't 0.
std::uintptr_t Way() noexcept {
  std::array<void*, 10> calls{};
  const int count = backtrace(calls.data(), static_cast<int>(calls.size()));
  std::uintptr_t way = 1;
  for (int i = 0; i < count; ++i)
    way = way * 31 + reinterpret_cast<std::uintptr_t>(calls[static_cast<std::size_t>(i)]);
  return way | 1;
}

/// Enters a way. @return false for one that was there
bool IsNew(std::uintptr_t aWay) noexcept {
  for (std::size_t i = aWay % g_auWays.size();; i = (i + 1) % g_auWays.size()) {
    std::uintptr_t there = 0;
    if (g_auWays[i].compare_exchange_strong(there, aWay)) return true;
    if (there == aWay) return false;
  }
}

bool IsLookedAt(const void* aCaller) noexcept {
  auto& looks = g_auLooks[reinterpret_cast<std::uintptr_t>(aCaller) % g_auLooks.size()];
  return looks < kMostLooks && looks++ < kMostLooks;
}

/// Whether the allocation that was asked for at aCaller is the one to fail.
bool IsFault(const void* aCaller) noexcept {
  thread_local bool inside = false;  // looking at the calls may allocate
  if (!g_bArmed.load(std::memory_order_relaxed) || g_bFailed || inside || !IsOurs(aCaller) ||
      !IsLookedAt(aCaller)) {
    return false;
  }
  inside = true;
  const bool fault = IsNew(Way()) && !g_bFailed.exchange(true);
  inside = false;
  return fault;
}

void* Allocate(const void* aCaller, std::size_t aSize, std::size_t aAlignment) noexcept {
  if (t_uAllocations >= t_uLastAllocation || IsFault(aCaller)) return nullptr;
  ++t_uAllocations;
  if (aAlignment <= alignof(std::max_align_t)) return std::malloc(aSize > 0 ? aSize : 1);
  return std::aligned_alloc(aAlignment, (aSize + aAlignment - 1) / aAlignment * aAlignment);
}

void* AllocateOrThrow(const void* aCaller, std::size_t aSize, std::size_t aAlignment) {
  void* block = Allocate(aCaller, aSize, aAlignment);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

ExhaustedHeap::ExhaustedHeap(std::size_t aAllocationsLeft) noexcept {
  t_uLastAllocation = t_uAllocations + aAllocationsLeft;
}

ExhaustedHeap::~ExhaustedHeap() { t_uLastAllocation = kUnlimited; }

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

std::size_t AllocationsOfThisThread() noexcept { return t_uAllocations; }

long ResidentKiB() {
  long size = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident * 4;
}

void* operator new(std::size_t aSize) { return AllocateOrThrow(__builtin_return_address(0), aSize, 1); }
void* operator new[](std::size_t aSize) { return AllocateOrThrow(__builtin_return_address(0), aSize, 1); }
void* operator new(std::size_t aSize, const std::nothrow_t&) noexcept {
  return Allocate(__builtin_return_address(0), aSize, 1);
}
void* operator new[](std::size_t aSize, const std::nothrow_t&) noexcept {
  return Allocate(__builtin_return_address(0), aSize, 1);
}
void* operator new(std::size_t aSize, std::align_val_t aAlignment) {
  return AllocateOrThrow(__builtin_return_address(0), aSize, static_cast<std::size_t>(aAlignment));
}
void* operator new[](std::size_t aSize, std::align_val_t aAlignment) {
  return AllocateOrThrow(__builtin_return_address(0), aSize, static_cast<std::size_t>(aAlignment));
}
void operator delete(void* aBlock) noexcept { std::free(aBlock); }
void operator delete[](void* aBlock) noexcept { std::free(aBlock); }
void operator delete(void* aBlock, std::size_t) noexcept { std::free(aBlock); }
void operator delete[](void* aBlock, std::size_t) noexcept { std::free(aBlock); }
void operator delete(void* aBlock, std::align_val_t) noexcept { std::free(aBlock); }
void operator delete[](void* aBlock, std::align_val_t) noexcept { std::free(aBlock); }
void operator delete(void* aBlock, std::size_t, std::align_val_t) noexcept { std::free(aBlock); }
void operator delete[](void* aBlock, std::size_t, std::align_val_t) noexcept { std::free(aBlock); }
