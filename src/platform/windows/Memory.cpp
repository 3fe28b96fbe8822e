// Memory for images, on Windows: the process heap allocates large blocks directly from the system. Any
// thread.

#include "platform/Memory.h"

#include <cstdlib>

void* AllocateImage(std::size_t aBytes) noexcept { return std::malloc(aBytes); }
