// Memory for images, on Windows: the process heap asks the system for large blocks by itself. Any thread.

#include "platform/Memory.h"

#include <cstdlib>

void* AllocateImage(std::size_t aBytes) noexcept { return std::malloc(aBytes); }
