// GLine: an infinite line through two points. A plain value, not synchronised.

#pragma once

#include "geometry/GPoint.h"

/// A line as base point and direction. The direction is not normalised.
struct GLineEquation {
  double x, y, z;
  double dx, dy, dz;
};

/// The line through two points. If the points are equal, the line has no direction and IsValid returns false.
class GLine {
 public:
  GPoint m_ptA{0.0, 0.0, 0.0};
  GPoint m_ptB{1.0, 0.0, 0.0};

  GLine() noexcept = default;
  GLine(const GPoint& aA, const GPoint& aB) noexcept : m_ptA(aA), m_ptB(aB) {}

  GLineEquation GetEquation() const noexcept;
  GPoint Direction() const noexcept { return m_ptB - m_ptA; }
  /// Returns whether the two points differ by more than the tolerance.
  bool IsValid() const noexcept { return m_ptA != m_ptB; }

  /// Returns the angle between the directions, 0 to pi; NaN if either line has no direction.
  double Angle(const GLine& aOther) const noexcept;
  /// Returns the distance of two lines: signed for lines that are skew or intersect, not negative for
  /// parallel lines. If neither line has a direction, returns 0 and sets the error code.
  double Distance(const GLine& aOther) const noexcept;
  /// Computes the intersection of two lines.
  /// @return false if they do not intersect; aPoint is unchanged
  bool Intersect(const GLine& aOther, GPoint& aPoint) const noexcept;
  /// Returns the distance of a point. A line without a direction sets the error code and is treated as its
  /// first point.
  /// @param aFoot receives the nearest point of the line
  double DistanceToPoint(const GPoint& aPoint, GPoint& aFoot) const noexcept;
  bool ContainsPoint(const GPoint& aPoint) const noexcept;
};
