// GCoord: a coordinate system held as an origin and three angles. A plain value, not synchronised.

#pragma once

#include <type_traits>

#include "geometry/GLine.h"
#include "geometry/GPlane.h"
#include "geometry/GPoint.h"

/// A local system (LCS) inside a parent system (PCS). The local point p has the parent coordinates T(x, y, z)
/// * Rx(m_dAngleX) * Ry(m_dAngleY) * Rz(m_dAngleZ) * p.
/// Angles are in radians and unbounded. A rotation computes all three angles again, so they can change to an
/// equivalent triple.
class GCoord {
 public:
  double x = 0.0, y = 0.0, z = 0.0;
  double m_dAngleX = 0.0, m_dAngleY = 0.0, m_dAngleZ = 0.0;

  constexpr GCoord() noexcept = default;
  explicit constexpr GCoord(const GPoint& aOrigin) noexcept : GCoord(aOrigin.x, aOrigin.y, aOrigin.z) {}
  constexpr GCoord(double aX, double aY, double aZ) noexcept : x(aX), y(aY), z(aZ) {}
  /// Converts from a plain structure with the same six members.
  template <class Matrix6d>
  requires std::is_aggregate_v<Matrix6d> && requires(const Matrix6d& m) { m.m_dAngleX; }
  explicit constexpr GCoord(const Matrix6d& m) noexcept
      : x(m.x), y(m.y), z(m.z), m_dAngleX(m.m_dAngleX), m_dAngleY(m.m_dAngleY), m_dAngleZ(m.m_dAngleZ) {}
  /// Converts to a plain structure with the same six members in the same order.
  template <class Matrix6d>
  requires std::is_aggregate_v<Matrix6d>
  constexpr Matrix6d As() const noexcept { return {x, y, z, m_dAngleX, m_dAngleY, m_dAngleZ}; }
  /// Sets the origin and keeps the angles.
  constexpr GCoord& operator=(const GPoint& aOrigin) noexcept {
    x = aOrigin.x;
    y = aOrigin.y;
    z = aOrigin.z;
    return *this;
  }

  constexpr GPoint Origin() const noexcept { return {x, y, z}; }

  // Move along the local axes. Forward is -z.
  void MoveRight(double aDistance) noexcept { *this = PointLCStoPCS({aDistance, 0.0, 0.0}); }
  void MoveUp(double aDistance) noexcept { *this = PointLCStoPCS({0.0, aDistance, 0.0}); }
  void MoveForward(double aDistance) noexcept { *this = PointLCStoPCS({0.0, 0.0, -aDistance}); }

  // Rotate about the local axes, or about any axis through a pivot. Axis and pivot are in the LCS.
  void RotateAboutX_RAD(double aAngle) noexcept;
  void RotateAboutY_RAD(double aAngle) noexcept;
  void RotateAboutZ_RAD(double aAngle) noexcept;
  void Rotate_RAD(double aAngle, const GPoint& aAxis, const GPoint& aPivot) noexcept;
  void ResetRotation() noexcept { m_dAngleX = m_dAngleY = m_dAngleZ = 0.0; }
  /// Rotates the system so that its axes get the directions of three vectors in the current LCS. Keeps the
  /// origin.
  void RotateToAxes(GPoint aX, GPoint aY, GPoint aZ) noexcept;
  /// Rotates the system so that its axes get the directions of three vectors in the PCS.
  void SetFromAxes(const GPoint& aX, const GPoint& aY, const GPoint& aZ) noexcept;

  GPoint PointLCStoPCS(const GPoint& aPoint) const noexcept;
  GPoint PointPCStoLCS(const GPoint& aPoint) const noexcept;
  GPoint VectorLCStoPCS(const GPoint& aVector) const noexcept { return PointLCStoPCS(aVector) - Origin(); }
  GPoint VectorPCStoLCS(const GPoint& aVector) const noexcept { return PointPCStoLCS(aVector + Origin()); }
  GLine LineLCStoPCS(const GLine& aLine) const noexcept;
  GLine LinePCStoLCS(const GLine& aLine) const noexcept;
  GPlane PlaneLCStoPCS(const GPlane& aPlane) const noexcept;
  GPlane PlanePCStoLCS(const GPlane& aPlane) const noexcept;

  /// Writes the placement as 16 elements in GL's order: (row, column) is at 4 * column + row.
  void GetMatrix16d(double* aElements) const;
  /// Sets the placement from a matrix in that order. The matrix must hold a rotation and a translation only;
  /// this is not checked.
  void SetMatrix16d(const double* aElements);
};

static_assert(sizeof(GCoord) == 6 * sizeof(double) && std::is_trivially_copyable_v<GCoord>);
