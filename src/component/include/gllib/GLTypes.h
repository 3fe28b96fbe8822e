/// @file
/// The structures that the interfaces pass. Names and layouts are fixed: existing hosts are compiled against
/// them. No state; any thread.

#pragma once

#include <gllib/GLPlatform.h>

/// A point or a vector.
struct GLDATA_POINT {
  double x;  ///< along the first axis
  double y;  ///< along the second axis
  double z;  ///< along the third axis
};

/// A colour with components from 0 to 1.
struct GLDATA_RGBA {
  float m_fRed;    ///< 0 to 1
  float m_fGreen;  ///< 0 to 1
  float m_fBlue;   ///< 0 to 1
  float m_fAlpha;  ///< opacity, 0 to 1
};

/// A pixel: four bytes in this order in memory. Passed by value.
struct GLDATA_RGBA4B {
  std::uint8_t m_bRed;    ///< 0 to 255
  std::uint8_t m_bGreen;  ///< 0 to 255
  std::uint8_t m_bBlue;   ///< 0 to 255
  std::uint8_t m_bAlpha;  ///< opacity, 0 to 255
};

/// Origin and angles of a coordinate system, equal to the matrix T(x, y, z) * Rx * Ry * Rz.
struct GLDATA_MATRIX6D {
  double x;          ///< coordinate of the origin
  double y;          ///< coordinate of the origin
  double z;          ///< coordinate of the origin
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
  GLDATA_POINT m_sNormals[3];  ///< one per corner
  GLDATA_RGBA m_sColors[3];    ///< one per corner
  GLDATA_POINT m_sCentroid;    ///< mean of the three points
  double m_dMidDistance;       ///< 0 when returned; for the host's use
};

/// The position of an iteration in a collection: a slot number. Negative or beyond the capacity after the
/// end.
struct GLPOSITION {
  std::int32_t m_iIndex;  ///< slot number
};
