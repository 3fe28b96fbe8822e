// GPlane: a plane through three points. A plain value, not synchronised.

#pragma once

#include "geometry/GLine.h"
#include "geometry/GPoint.h"

/// The plane of the points with A*x + B*y + C*z + D = 0: four doubles in the order of glClipPlane.
struct GPlaneEquation {
  double A, B, C, D;
};

/// Position of one plane relative to another.
enum GPlaneRelation : int {
  kPlanesUnrelated = 0,  ///< the other plane has no normal
  kPlanesSame = 1,
  kPlanesParallel = 2,
  kPlanesMeet = 4,  ///< the planes intersect in a line
};

/// The plane through three points. Its normal follows the right-hand rule over the first, second and third
/// point. Points on one line give a plane without a normal. IsValid returns false for such a plane, and if a
/// number of the equation is not finite.
class GPlane {
 public:
  GPoint m_ptA{0.0, 0.0, 0.0};
  GPoint m_ptB{1.0, 0.0, 0.0};
  GPoint m_ptC{0.0, 1.0, 0.0};

  GPlane() noexcept = default;
  GPlane(const GPoint& aA, const GPoint& aB, const GPoint& aC) noexcept : m_ptA(aA), m_ptB(aB), m_ptC(aC) {}
  /// Makes the plane through a point at right angles to a normal. The normal of the plane may point in the
  /// opposite direction.
  GPlane(const GPoint& aNormal, const GPoint& aPoint) noexcept;

  /// Returns the equation. Its normal is not normalised: the length depends on the three points.
  GPlaneEquation GetEquation() const noexcept;
  bool IsValid() const noexcept;
  /// Returns the normal with length 1. Without a normal, returns (0, 0, 0) and sets the error code.
  GPoint GetUnitNormal() const noexcept;

  // Intersections.
  // @return false if there is none; nothing is written
  bool Intersect(const GLine& aLine, GPoint& aPoint) const noexcept;
  /// The first point of the line has one coordinate 0: the first of x, y, z along which the line's direction
  /// exceeds the tolerance. If that is y, the line is the intersection mirrored through the origin.
  bool Intersect(const GPlane& aOther, GLine& aLine) const noexcept;
  bool Intersect(const GPlane& aSecond, const GPlane& aThird, GPoint& aPoint) const noexcept;

  /// Returns the relation by exact comparison: planes that are not parallel only because of rounding
  /// intersect in a line.
  GPlaneRelation Relation(const GPlane& aOther) const noexcept;
  /// Returns the angle between the normals, 0 to pi; NaN if either plane has none.
  double Angle(const GPlane& aOther) const noexcept;
  /// Returns the angle between the plane and a line, -pi/2 to pi/2: positive if the line's direction points
  /// to the side of the normal. NaN if the plane has no normal or the line no direction.
  double Angle(const GLine& aLine) const noexcept;
  /// Returns the distance of a point, never negative. A plane without a normal returns 0 and sets the error
  /// code.
  /// @param aResult receives the point moved by that distance along the normal
  double DistanceToPoint(const GPoint& aPoint, GPoint& aResult) const noexcept;
  bool ContainsPoint(const GPoint& aPoint) const noexcept;
  bool ContainsLine(const GLine& aLine) const noexcept;

 private:
  /// Returns (A, B, C) of the equation.
  GPoint Normal() const noexcept { return (m_ptB - m_ptA).Cross(m_ptC - m_ptA); }
};
