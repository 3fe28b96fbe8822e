// Memory for images, from the process heap. Any thread.

#pragma once

#include <cstddef>

/// Memory for aBytes of image, laid out so that a large one costs few page faults when it is first filled.
/// @return the block, which std::free ends; null when there is none
void* AllocateImage(std::size_t aBytes) noexcept;
