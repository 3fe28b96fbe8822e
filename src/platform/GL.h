// OpenGL 1.1 and GLU, by the system's headers.

#pragma once

#include <gllib/GLPlatform.h>

#include <GL/gl.h>
#include <GL/glu.h>

/// Whether a rendering context is current on this thread, anybody's. GL itself passes calls over where none
/// is; GLU reads what isn't there.
inline bool IsGLCurrent() noexcept { return glGetString(GL_VERSION) != nullptr; }
