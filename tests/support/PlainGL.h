// The same scene, drawn by plain GL in a rendering context that the component does not know. It draws on a
// separate thread, which ends before the picture is returned.

#pragma once

#include "platform/GL.h"
#include "support/Picture.h"
#include "support/Test.h"

/// Draws into a surface with 24-bit colour and a depth of 24 or 32 bits, and reads the picture. On Linux the
/// surface is off-screen and needs no display server. GL's state is the default, and the surface is cleared
/// to black. A GL error fails the running test.
Picture DrawPlainGL(int aWidth, int aHeight, const std::function<void()>& aDraw);
