// The structures that the interfaces pass, by their published names and layouts.
// Owns no state; any thread.

#pragma once

#include <gllib/GLPlatform.h>

/// A point or a vector.
struct GLDATA_POINT {
  double x, y, z;
};

/// A colour; each component from 0 to 1.
struct GLDATA_RGBA {
  float m_fRed, m_fGreen, m_fBlue, m_fAlpha;
};

/// A pixel: four bytes in this order in memory. Goes by value.
struct GLDATA_RGBA4B {
  std::uint8_t m_bRed, m_bGreen, m_bBlue, m_bAlpha;
};

/// A placement: as a matrix T(x, y, z) * Rx * Ry * Rz. Angles in radians.
struct GLDATA_MATRIX6D {
  double x, y, z;
  double m_dAngleX, m_dAngleY, m_dAngleZ;
};

/// A 4 by 4 matrix in GL's order (OpenGL 1.1, 2.11.2): element (row, column) is m[column][row].
struct GLDATA_MATRIX16D {
  double m[4][4];
};

/// One stored transparent triangle.
struct GLDATA_TRANS_TRIANGLE {
  GLDATA_POINT m_sPoints[3];
  GLDATA_POINT m_sNormals[3];
  GLDATA_RGBA m_sColors[3];
  GLDATA_POINT m_sCentroid;  ///< mean of the three points
  double m_dMidDistance;     ///< the client's to fill; handed out as 0
};

/// A place in a collection's walk: a slot number; negative or past the capacity once the walk has run off.
struct GLPOSITION {
  std::int32_t m_iIndex;
};
