// GLClipPlane: one clip plane of a context. A plain value.

#pragma once

#include "geometry/GPlane.h"

struct GLClipPlane {
  GPlane m_sPlane;  ///< through the three points that the host gave
  int m_iName = 0;  ///< GL_CLIP_PLANE0 or higher
};

/// Enables a plane in GL and gives its equation, made anew from the three points.
void SendClipPlane(const GLClipPlane& aPlane) noexcept;
