// The counting operator new. Each thread has a counter of its own. Over-aligned objects, which aren't
// counted, keep the library's.

#include "support/Counting.h"

#include <windows.h>

#include <psapi.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kUnlimited = SIZE_MAX;

thread_local std::size_t t_uAllocations = 0;
thread_local std::size_t t_uLastAllocation = kUnlimited;

void* Allocate(std::size_t aSize) noexcept {
  if (t_uAllocations >= t_uLastAllocation) return nullptr;
  ++t_uAllocations;
  return std::malloc(aSize > 0 ? aSize : 1);
}

void* AllocateOrThrow(std::size_t aSize) {
  void* block = Allocate(aSize);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

ExhaustedHeap::ExhaustedHeap(std::size_t aAllocationsLeft) noexcept {
  t_uLastAllocation = t_uAllocations + aAllocationsLeft;
}

ExhaustedHeap::~ExhaustedHeap() { t_uLastAllocation = kUnlimited; }

std::size_t AllocationsOfThisThread() noexcept { return t_uAllocations; }

long ResidentKiB() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
  return static_cast<long>(counters.WorkingSetSize / 1024);
}

void* operator new(std::size_t aSize) { return AllocateOrThrow(aSize); }
void* operator new[](std::size_t aSize) { return AllocateOrThrow(aSize); }
void* operator new(std::size_t aSize, const std::nothrow_t&) noexcept { return Allocate(aSize); }
void* operator new[](std::size_t aSize, const std::nothrow_t&) noexcept { return Allocate(aSize); }
void operator delete(void* aBlock) noexcept { std::free(aBlock); }
void operator delete[](void* aBlock) noexcept { std::free(aBlock); }
void operator delete(void* aBlock, std::size_t) noexcept { std::free(aBlock); }
void operator delete[](void* aBlock, std::size_t) noexcept { std::free(aBlock); }
