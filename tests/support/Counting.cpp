// The counting operator new, with one counter per thread. Over-aligned objects use the library's operator and
// are not counted.

#include "support/Counting.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kUnlimited = SIZE_MAX;

thread_local std::size_t t_uAllocations = 0;
thread_local std::size_t t_uLastAllocation = kUnlimited;

void* Allocate(const void* aCaller, std::size_t aSize) noexcept {
  if (t_uAllocations >= t_uLastAllocation || AllocationFault::Is(aCaller)) return nullptr;
  ++t_uAllocations;
  return std::malloc(aSize > 0 ? aSize : 1);
}

void* AllocateOrThrow(const void* aCaller, std::size_t aSize) {
  void* block = Allocate(aCaller, aSize);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

ExhaustedHeap::ExhaustedHeap(std::size_t aAllocationsLeft) noexcept {
  t_uLastAllocation = t_uAllocations + aAllocationsLeft;
}

ExhaustedHeap::~ExhaustedHeap() { t_uLastAllocation = kUnlimited; }

std::size_t AllocationsOfThisThread() noexcept { return t_uAllocations; }

void* operator new(std::size_t aSize) { return AllocateOrThrow(__builtin_return_address(0), aSize); }
void* operator new[](std::size_t aSize) { return AllocateOrThrow(__builtin_return_address(0), aSize); }
void* operator new(std::size_t aSize, const std::nothrow_t&) noexcept {
  return Allocate(__builtin_return_address(0), aSize);
}
void* operator new[](std::size_t aSize, const std::nothrow_t&) noexcept {
  return Allocate(__builtin_return_address(0), aSize);
}
void operator delete(void* aBlock) noexcept { std::free(aBlock); }
void operator delete[](void* aBlock) noexcept { std::free(aBlock); }
void operator delete(void* aBlock, std::size_t) noexcept { std::free(aBlock); }
void operator delete[](void* aBlock, std::size_t) noexcept { std::free(aBlock); }
