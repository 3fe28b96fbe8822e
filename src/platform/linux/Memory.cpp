// Memory for images, on Linux: large blocks use huge pages if the system supports them. Any thread.

#include "platform/Memory.h"

#include <sys/mman.h>

#include <cstdlib>

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kLarge = 4 * kHugePage;  // from this size on the cost of rounding up is small

}  // namespace

void* AllocateImage(std::size_t aBytes) noexcept {
  if (aBytes < kLarge) return std::malloc(aBytes);
  const std::size_t rounded = (aBytes + kHugePage - 1) / kHugePage * kHugePage;
  void* block = std::aligned_alloc(kHugePage, rounded);
  if (block != nullptr) (void)madvise(block, rounded, MADV_HUGEPAGE);  // optional: small pages also work
  return block;
}
