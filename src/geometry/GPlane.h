// GPlane: a plane through three points. A plain value; belongs to whoever holds it.

#pragma once

#include "geometry/GLine.h"
#include "geometry/GPoint.h"

/// The plane of the points with A*x + B*y + C*z + D = 0; four doubles in the order that GL takes them.
struct GPlaneEquation {
  double A, B, C, D;
};

/// How one plane lies to another.
enum GPlaneRelation : int {
  kPlanesUnrelated = 0,  ///< the other has no normal
  kPlanesSame = 1,
  kPlanesParallel = 2,
  kPlanesMeet = 4,  ///< in a line
};

/// The plane through three points, its normal by the right-hand rule from the first over the second to the
/// third. Points on one line give a plane with no normal; IsValid is false then, and where the equation has a
/// number that isn't finite.
class GPlane {
 public:
  GPoint m_ptA{0.0, 0.0, 0.0};
  GPoint m_ptB{1.0, 0.0, 0.0};
  GPoint m_ptC{0.0, 1.0, 0.0};

  GPlane() noexcept = default;
  GPlane(const GPoint& aA, const GPoint& aB, const GPoint& aC) noexcept : m_ptA(aA), m_ptB(aB), m_ptC(aC) {}
  /// The plane through a point at right angles to a normal; which way its own normal points is left open.
  GPlane(const GPoint& aNormal, const GPoint& aPoint) noexcept;

  /// The equation. Its normal isn't normalised: its length comes from the points.
  GPlaneEquation GetEquation() const noexcept;
  bool IsValid() const noexcept;
  /// The normal of length 1; (0, 0, 0), with the error code set, when there is none.
  GPoint GetUnitNormal() const noexcept;

  // Crossings. @return false, with nothing written, when there is none
  bool Intersect(const GLine& aLine, GPoint& aPoint) const noexcept;
  /// The line starts where one coordinate is 0: the first of x, y, z along which its direction exceeds the
  /// tolerance. Started at y = 0, it is the common line mirrored through the origin.
  bool Intersect(const GPlane& aOther, GLine& aLine) const noexcept;
  bool Intersect(const GPlane& aSecond, const GPlane& aThird, GPoint& aPoint) const noexcept;

  /// Exact: planes that differ from parallel by rounding meet in a line.
  GPlaneRelation Relation(const GPlane& aOther) const noexcept;
  /// The angle between the normals, 0 to pi; not a number when either has none.
  double Angle(const GPlane& aOther) const noexcept;
  /// The angle between the plane and a line, positive on the side of the normal.
  double Angle(const GLine& aLine) const noexcept;
  /// The distance of a point, never negative. A plane with no normal gives 0 and sets the error code.
  /// @param aResult receives the point moved by that distance along the normal
  double DistanceToPoint(const GPoint& aPoint, GPoint& aResult) const noexcept;
  bool ContainsPoint(const GPoint& aPoint) const noexcept;
  bool ContainsLine(const GLine& aLine) const noexcept;

 private:
  /// (A, B, C) of the equation.
  GPoint Normal() const noexcept { return (m_ptB - m_ptA).Cross(m_ptC - m_ptA); }
};
