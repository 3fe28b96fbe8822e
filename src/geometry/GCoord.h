// GCoord: a coordinate system held as an origin and three angles. A plain value; belongs to whoever holds it.

#pragma once

#include <type_traits>

#include "geometry/GLine.h"
#include "geometry/GPlane.h"
#include "geometry/GPoint.h"

/// A local system (LCS) inside a parent system (PCS): a local point p stands in the parent at
/// T(x, y, z) * Rx(m_dAngleX) * Ry(m_dAngleY) * Rz(m_dAngleZ) * p. Angles in radians, of any size; a rotation
/// derives them anew, which can change their form.
class GCoord {
 public:
  double x = 0.0, y = 0.0, z = 0.0;
  double m_dAngleX = 0.0, m_dAngleY = 0.0, m_dAngleZ = 0.0;

  constexpr GCoord() noexcept = default;
  explicit constexpr GCoord(const GPoint& aOrigin) noexcept : GCoord(aOrigin.x, aOrigin.y, aOrigin.z) {}
  constexpr GCoord(double aX, double aY, double aZ) noexcept : x(aX), y(aY), z(aZ) {}
  /// From a plain structure with the same six members.
  template <class Matrix6d>
  requires std::is_aggregate_v<Matrix6d> && requires(const Matrix6d& m) { m.m_dAngleX; }
  explicit constexpr GCoord(const Matrix6d& m) noexcept
      : x(m.x), y(m.y), z(m.z), m_dAngleX(m.m_dAngleX), m_dAngleY(m.m_dAngleY), m_dAngleZ(m.m_dAngleZ) {}
  /// As a plain structure of the same six members in the same order.
  template <class Matrix6d>
  requires std::is_aggregate_v<Matrix6d>
  constexpr Matrix6d As() const noexcept { return {x, y, z, m_dAngleX, m_dAngleY, m_dAngleZ}; }
  /// Replaces the origin alone.
  constexpr GCoord& operator=(const GPoint& aOrigin) noexcept {
    x = aOrigin.x;
    y = aOrigin.y;
    z = aOrigin.z;
    return *this;
  }

  constexpr GPoint Origin() const noexcept { return {x, y, z}; }

  // Shifts along the local axes; forward is minus z.
  void MoveRight(double aDistance) noexcept { *this = PointLCStoPCS({aDistance, 0.0, 0.0}); }
  void MoveUp(double aDistance) noexcept { *this = PointLCStoPCS({0.0, aDistance, 0.0}); }
  void MoveForward(double aDistance) noexcept { *this = PointLCStoPCS({0.0, 0.0, -aDistance}); }

  // Turns about the local axes, and about any axis through a pivot, both given in the LCS.
  void RotateAboutX_RAD(double aAngle) noexcept;
  void RotateAboutY_RAD(double aAngle) noexcept;
  void RotateAboutZ_RAD(double aAngle) noexcept;
  void Rotate_RAD(double aAngle, const GPoint& aAxis, const GPoint& aPivot) noexcept;
  void ResetRotation() noexcept { m_dAngleX = m_dAngleY = m_dAngleZ = 0.0; }
  /// Turns the axes to three vectors given in the present LCS. The origin stays.
  void RotateToAxes(GPoint aX, GPoint aY, GPoint aZ) noexcept;
  /// Turns the axes to three vectors given in the PCS.
  void SetFromAxes(const GPoint& aX, const GPoint& aY, const GPoint& aZ) noexcept;

  GPoint PointLCStoPCS(const GPoint& aPoint) const noexcept;
  GPoint PointPCStoLCS(const GPoint& aPoint) const noexcept;
  GPoint VectorLCStoPCS(const GPoint& aVector) const noexcept { return PointLCStoPCS(aVector) - Origin(); }
  GPoint VectorPCStoLCS(const GPoint& aVector) const noexcept { return PointPCStoLCS(aVector + Origin()); }
  GLine LineLCStoPCS(const GLine& aLine) const noexcept;
  GLine LinePCStoLCS(const GLine& aLine) const noexcept;
  GPlane PlaneLCStoPCS(const GPlane& aPlane) const noexcept;
  GPlane PlanePCStoLCS(const GPlane& aPlane) const noexcept;

  /// The placement as 16 elements in GL's order: (row, column) at 4 * column + row.
  void GetMatrix16d(double* aElements) const;
  /// Takes the placement from such a matrix, which holds a rotation and a shift; nothing tests this.
  void SetMatrix16d(const double* aElements);
};

static_assert(sizeof(GCoord) == 6 * sizeof(double) && std::is_trivially_copyable_v<GCoord>);
