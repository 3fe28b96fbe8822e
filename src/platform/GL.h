// OpenGL 1.1 and GLU, from the system's headers.

#pragma once

#include <gllib/GLPlatform.h>

#include <GL/gl.h>
#include <GL/glu.h>

/// Returns whether a rendering context is current on this thread, also one of the host's. Without a context
/// GL ignores calls, but GLU reads invalid memory.
inline bool IsGLCurrent() noexcept { return glGetString(GL_VERSION) != nullptr; }
