// Operations on rendering contexts besides those of the system. Any thread.

#include "platform/RenderingContext.h"

bool IsCurrentContext(HGLRC hRC) noexcept { return hRC != nullptr && hRC == wglGetCurrentContext(); }
