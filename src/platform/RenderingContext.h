// GL rendering contexts on a device context. The documented WGL operations.
// A context is current on one thread at a time. Contexts that the host made are never touched: letting go of
// the current context does nothing on a thread where none of the component's is current.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

using PROC = void (*)();

HGLRC wglCreateContext(HDC hDC) noexcept;
BOOL wglDeleteContext(HGLRC hRC) noexcept;
/// Makes a context current on the calling thread, or lets go of the one that is.
BOOL wglMakeCurrent(HDC hDC, HGLRC hRC) noexcept;
/// The component's context that is current on the calling thread; null when none of its own is.
HGLRC wglGetCurrentContext() noexcept;
/// An entry point of WGL_ARB_pixel_format or WGL_ARB_extensions_string. @return null for others
PROC wglGetProcAddress(const char* szName) noexcept;

#endif

/// Whether a context of the component's is the one that GL works with on the calling thread, also when its
/// window has changed its size meanwhile, which wglGetCurrentContext takes for none.
bool IsCurrentContext(HGLRC hRC) noexcept;
