// GLClipPlane: one clip plane of a context. A plain value.

#pragma once

#include "geometry/GPlane.h"

struct GLClipPlane {
  GPlane m_sPlane;  ///< plane through the host's three points
  int m_iName = 0;  ///< GL_CLIP_PLANE0 or higher
};

/// Enables a plane in GL and sends its equation, computed from the three points.
void SendClipPlane(const GLClipPlane& aPlane) noexcept;
