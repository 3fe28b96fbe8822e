// PixelBlock: owns a block of pixels from the process heap. Any thread.

#pragma once

#include <gllib/GLTypes.h>

#include "platform/Memory.h"

/// Owns pixels; null means no image.
using PixelBlock = HeapBlock<GLDATA_RGBA4B[]>;

/// Largest number of pixels in an image: their bytes fit 32 bits.
inline constexpr std::int64_t kMostPixels = UINT32_MAX / sizeof(GLDATA_RGBA4B);

/// Allocates pixels with undefined values.
/// @return null if no memory is available
inline PixelBlock NewPixels(std::size_t aCount) noexcept {
  return PixelBlock(static_cast<GLDATA_RGBA4B*>(AllocateImage(aCount * sizeof(GLDATA_RGBA4B))));
}
