// GL rendering contexts on a device context. The documented WGL operations. A context is current on at most
// one thread. The operations never touch contexts of the host: releasing the current context has no effect if
// none of the component's is current.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

using PROC = void (*)();

HGLRC wglCreateContext(HDC hDC) noexcept;
BOOL wglDeleteContext(HGLRC hRC) noexcept;
/// Makes a context current on the calling thread, or releases the current one.
BOOL wglMakeCurrent(HDC hDC, HGLRC hRC) noexcept;
/// Returns the component's context that is current on the calling thread; null if there is none.
HGLRC wglGetCurrentContext() noexcept;
/// Returns an entry point of WGL_ARB_pixel_format or WGL_ARB_extensions_string.
/// @return null for other names
PROC wglGetProcAddress(const char* szName) noexcept;

#endif

/// Returns whether GL uses this context of the component on the calling thread. If the window has outgrown
/// its drawable, this still returns true, while wglGetCurrentContext returns null.
bool IsCurrentContext(HGLRC hRC) noexcept;
