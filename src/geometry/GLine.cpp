// GLine: distances, angles and intersections of lines. Any thread; one thread per object.

#include "geometry/GLine.h"

#include <algorithm>

GLineEquation GLine::GetEquation() const noexcept {
  const GPoint d = Direction();
  return {m_ptA.x, m_ptA.y, m_ptA.z, d.x, d.y, d.z};
}

double GLine::Angle(const GLine& aOther) const noexcept {
  const GPoint d1 = Direction();
  const GPoint d2 = aOther.Direction();
  return std::acos(std::clamp(d1.Dot(d2) / (d1.Length() * d2.Length()), -1.0, 1.0));
}

double GLine::Distance(const GLine& aOther) const noexcept {
  const GPoint n = Direction().Cross(aOther.Direction());
  if (n.x != 0.0 || n.y != 0.0 || n.z != 0.0) return (m_ptA - aOther.m_ptA).Dot(n) / n.Length();
  GPoint foot(0.0, 0.0, 0.0);
  if (IsValid()) return DistanceToPoint(aOther.m_ptA, foot);
  if (aOther.IsValid()) return aOther.DistanceToPoint(m_ptA, foot);
  SetGeomError(kGeomNoDirection);
  return 0.0;
}

bool GLine::Intersect(const GLine& aOther, GPoint& aPoint) const noexcept {
  const double tolerance = GetTolerance();
  if (std::abs(Distance(aOther)) > tolerance) return false;
  const GPoint d = Direction();
  const GPoint e = aOther.m_ptA - aOther.m_ptB;
  const GPoint f = aOther.m_ptA - m_ptA;
  // Two of the three equations determine the result. The first solvable pair of coordinates is used.
  constexpr double GPoint::*kPairs[][2] = {
      {&GPoint::x, &GPoint::y}, {&GPoint::x, &GPoint::z}, {&GPoint::y, &GPoint::z}};
  for (const auto& [u, v] : kPairs) {
    const double divisor = e.*v * d.*u - d.*v * e.*u;
    if (!(std::abs(divisor) > tolerance)) continue;
    const double t = (e.*v * f.*u - f.*v * e.*u) / divisor;
    aPoint = m_ptA + d * t;
    return true;
  }
  return false;
}

double GLine::DistanceToPoint(const GPoint& aPoint, GPoint& aFoot) const noexcept {
  const GPoint d = Direction();
  const double q = d.Dot(d);
  if (q == 0.0) {
    SetGeomError(kGeomNoDirection);
    aFoot = m_ptA;
    return m_ptA.Distance(aPoint);
  }
  const GPoint w = aPoint - m_ptA;
  const GPoint across = w.Cross(d);
  aFoot = m_ptA + w.Project(d);
  return std::sqrt(across.Dot(across) / q);
}

bool GLine::ContainsPoint(const GPoint& aPoint) const noexcept {
  GPoint foot(0.0, 0.0, 0.0);
  return DistanceToPoint(aPoint, foot) < GetTolerance();
}
