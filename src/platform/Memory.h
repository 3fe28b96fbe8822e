// Memory for images, from the process heap. Any thread.

#pragma once

#include <cstddef>

/// Allocates aBytes for an image. Large blocks are laid out so that the first fill causes few page faults.
/// @return the block, to be freed by std::free; null if no memory is available
void* AllocateImage(std::size_t aBytes) noexcept;
