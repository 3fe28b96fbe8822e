// GLine: an infinite line through two points. A plain value; belongs to whoever holds it.

#pragma once

#include "geometry/GPoint.h"

/// A line as base point and direction, which isn't normalised.
struct GLineEquation {
  double x, y, z;
  double dx, dy, dz;
};

/// The line through two points. Equal points give a line with no direction, which IsValid tells.
class GLine {
 public:
  GPoint m_ptA{0.0, 0.0, 0.0};
  GPoint m_ptB{1.0, 0.0, 0.0};

  GLine() noexcept = default;
  GLine(const GPoint& aA, const GPoint& aB) noexcept : m_ptA(aA), m_ptB(aB) {}

  GLineEquation GetEquation() const noexcept;
  GPoint Direction() const noexcept { return m_ptB - m_ptA; }
  /// Whether the two points differ, within the tolerance.
  bool IsValid() const noexcept { return m_ptA != m_ptB; }

  /// The angle between the directions, 0 to pi; not a number when either has no direction.
  double Angle(const GLine& aOther) const noexcept;
  /// The distance of two lines; signed when they are skew or meet, a magnitude when they are parallel.
  /// Two lines with no direction give 0 and set the error code.
  double Distance(const GLine& aOther) const noexcept;
  /// The point where two lines meet. @return false when they don't; aPoint stays as it is
  bool Intersect(const GLine& aOther, GPoint& aPoint) const noexcept;
  /// The distance of a point. A line with no direction sets the error code and counts as its first point.
  /// @param aFoot receives the nearest point of the line
  double DistanceToPoint(const GPoint& aPoint, GPoint& aFoot) const noexcept;
  bool ContainsPoint(const GPoint& aPoint) const noexcept;
};
