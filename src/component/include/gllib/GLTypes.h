/// @file
/// The structures that the interfaces pass, by their published names and layouts.
/// Owns no state; any thread.

#pragma once

#include <gllib/GLPlatform.h>

/// A point or a vector.
struct GLDATA_POINT {
  double x;  ///< along the first axis
  double y;  ///< along the second axis
  double z;  ///< along the third axis
};

/// A colour; each component from 0 to 1.
struct GLDATA_RGBA {
  float m_fRed;    ///< 0 to 1
  float m_fGreen;  ///< 0 to 1
  float m_fBlue;   ///< 0 to 1
  float m_fAlpha;  ///< opacity, 0 to 1
};

/// A pixel: four bytes in this order in memory. Goes by value.
struct GLDATA_RGBA4B {
  std::uint8_t m_bRed;    ///< 0 to 255
  std::uint8_t m_bGreen;  ///< 0 to 255
  std::uint8_t m_bBlue;   ///< 0 to 255
  std::uint8_t m_bAlpha;  ///< opacity, 0 to 255
};

/// A placement: as a matrix T(x, y, z) * Rx * Ry * Rz. Angles in radians.
struct GLDATA_MATRIX6D {
  double x;          ///< of the origin
  double y;          ///< of the origin
  double z;          ///< of the origin
  double m_dAngleX;  ///< radians about x
  double m_dAngleY;  ///< radians about y
  double m_dAngleZ;  ///< radians about z
};

/// A 4 by 4 matrix in GL's order (OpenGL 1.1, 2.11.2): element (row, column) is m[column][row].
struct GLDATA_MATRIX16D {
  double m[4][4];  ///< by column, then row
};

/// One stored transparent triangle.
struct GLDATA_TRANS_TRIANGLE {
  GLDATA_POINT m_sPoints[3];   ///< the corners
  GLDATA_POINT m_sNormals[3];  ///< one a corner
  GLDATA_RGBA m_sColors[3];    ///< one a corner
  GLDATA_POINT m_sCentroid;    ///< mean of the three points
  double m_dMidDistance;       ///< the client's to fill; handed out as 0
};

/// A place in a collection's walk: a slot number; negative or past the capacity once the walk has run off.
struct GLPOSITION {
  std::int32_t m_iIndex;  ///< the slot
};
