/// @file
/// How the memory allocator of the process treats what is freed: a choice of the program, which the component
/// never takes on its own.

#pragma once

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

/// Makes the allocator keep what the program frees, for later allocations, instead of giving it back to the
/// system. For programs that may run on Mesa's software renderer: it allocates and frees megabytes in every
/// frame, and with glibc's defaults the system takes these pages away and clears new ones each time. That can
/// cost more than the drawing itself, on virtual machines above all. Frames of a GPU gain nothing.
///
/// Sets glibc's M_MMAP_THRESHOLD (32 MiB), M_TRIM_THRESHOLD (512 MiB) and M_TOP_PAD (16 MiB) by mallopt, for
/// the whole process and to its end, in place of what the environment says of these. Has no effect with other
/// C libraries and on other systems. The process keeps up to 512 MiB of free memory for each of glibc's
/// arenas.
///
/// To be called at the start of main, before other threads allocate.
/// @return whether the allocator has taken all three values
inline bool GLKeepFreedMemory() noexcept {
#ifdef __GLIBC__
  constexpr int kMiB = 1024 * 1024;
  const bool mapped = mallopt(M_MMAP_THRESHOLD, 32 * kMiB) != 0;  // the highest that glibc takes
  const bool trimmed = mallopt(M_TRIM_THRESHOLD, 512 * kMiB) != 0;
  const bool padded = mallopt(M_TOP_PAD, 16 * kMiB) != 0;
  return mapped && trimmed && padded;
#else
  return false;
#endif
}
