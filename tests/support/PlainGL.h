// The twin: the same scene drawn by plain GL calls, in a rendering context that the component knows nothing
// of. It draws on a thread of its own, which ends before the picture is handed out.

#pragma once

#include <functional>

#include "support/Picture.h"

/// Draws in an off-screen surface of 24-bit colour and 24-bit depth, made by EGL without any display server,
/// and reads the picture back. GL stands at its defaults, and the surface is cleared to black; a GL error
/// that was left fails the running test.
Picture DrawPlainGL(int aWidth, int aHeight, const std::function<void()>& aDraw);
