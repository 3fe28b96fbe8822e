// OpenGL 1.1 and GLU, by the system's headers.

#pragma once

#include <gllib/GLPlatform.h>

#include <GL/gl.h>
#include <GL/glu.h>
