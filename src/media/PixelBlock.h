// PixelBlock: owns a block of pixels from the process heap. Any thread.

#pragma once

#include <gllib/GLTypes.h>

#include <cstdlib>
#include <memory>

#include "platform/Memory.h"

struct FreeBlock {
  void operator()(void* aBlock) const noexcept { std::free(aBlock); }
};

/// Owns pixels; null means no image.
using PixelBlock = std::unique_ptr<GLDATA_RGBA4B[], FreeBlock>;

/// Largest number of pixels in an image: their bytes fit 32 bits.
inline constexpr std::int64_t kMostPixels = UINT32_MAX / sizeof(GLDATA_RGBA4B);

/// Allocates pixels with undefined values.
/// @return null if no memory is available
inline PixelBlock NewPixels(std::size_t aCount) noexcept {
  return PixelBlock(static_cast<GLDATA_RGBA4B*>(AllocateImage(aCount * sizeof(GLDATA_RGBA4B))));
}
