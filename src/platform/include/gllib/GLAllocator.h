/// @file
/// Settings of the process's memory allocator. Only the program may choose them; the component never calls
/// this.

#pragma once

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

/// Makes the allocator keep freed memory for later allocations instead of returning it to the system. For
/// programs that may run on Mesa's software renderer, which allocates and frees megabytes per frame. With
/// glibc's defaults the system unmaps these pages and clears new ones each time. That can cost more than the
/// drawing itself, in particular on virtual machines. With a GPU there is no gain.
///
/// Sets glibc's M_MMAP_THRESHOLD (32 MiB), M_TRIM_THRESHOLD (512 MiB) and M_TOP_PAD (16 MiB) by mallopt, for
/// the whole process until its end. This overrides settings in the environment. Has no effect with other C
/// libraries and on other systems. The process keeps up to 512 MiB of free memory for each of glibc's arenas.
///
/// Call it at the start of main, before other threads allocate.
/// @return whether the allocator has accepted all three values
inline bool GLKeepFreedMemory() noexcept {
#ifdef __GLIBC__
  constexpr int kMiB = 1024 * 1024;
  const bool mapped = mallopt(M_MMAP_THRESHOLD, 32 * kMiB) != 0;  // the highest value that glibc accepts
  const bool trimmed = mallopt(M_TRIM_THRESHOLD, 512 * kMiB) != 0;
  const bool padded = mallopt(M_TOP_PAD, 16 * kMiB) != 0;
  return mapped && trimmed && padded;
#else
  return false;
#endif
}
