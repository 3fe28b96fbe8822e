// Entry points of WGL_ARB_extensions_string and WGL_ARB_pixel_format, for the display's formats. Any thread.

#pragma once

#include "platform/RenderingContext.h"

/// Returns an entry point by its name.
/// @return null for other names
PROC PixelFormatArbEntryPoint(const char* aName) noexcept;
