// Memory from the process heap. Any thread.

#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

struct FreeBlock {
  void operator()(void* aBlock) const noexcept { std::free(aBlock); }
};

/// Owns a block that std::free frees.
template <class T>
using HeapBlock = std::unique_ptr<T, FreeBlock>;

/// Allocates aBytes for an image. Large blocks are laid out so that the first fill causes few page faults.
/// @return the block, to be freed by std::free; null if no memory is available
void* AllocateImage(std::size_t aBytes) noexcept;
