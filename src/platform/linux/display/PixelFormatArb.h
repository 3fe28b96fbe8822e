// The entry points of WGL_ARB_extensions_string and WGL_ARB_pixel_format, over the display's formats. Any
// thread.

#pragma once

#include "platform/RenderingContext.h"

/// @return null for a name that isn't among them
PROC PixelFormatArbEntryPoint(const char* aName) noexcept;
