// What the component asks of rendering contexts beside the system's own operations. Any thread.

#include "platform/RenderingContext.h"

bool IsCurrentContext(HGLRC hRC) noexcept { return hRC != nullptr && hRC == wglGetCurrentContext(); }
