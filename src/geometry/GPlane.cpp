// GPlane: equation, intersections and distances of planes. Any thread; one thread per object.

#include "geometry/GPlane.h"

#include <algorithm>
#include <cmath>

GPlane::GPlane(const GPoint& aNormal, const GPoint& aPoint) noexcept
    : m_ptA(aPoint), m_ptB(aPoint), m_ptC(aPoint) {
  const double a = aNormal.x, b = aNormal.y, c = aNormal.z;
  const double d = -aNormal.Dot(aPoint);
  const GPoint& p = aPoint;
  // Chooses two coordinates freely and computes the third from the equation. The third is one whose
  // coefficient is not 0.
  if (a == 0.0 && b == 0.0) {
    m_ptB.Set(p.x + 2, p.y + 1, p.z);
    m_ptC.Set(p.x + 1, p.y + 2, p.z);
  } else if (a == 0.0) {
    const auto place = [&](double aX, double aZ) { return GPoint(aX, -(a * aX + d + c * aZ) / b, aZ); };
    m_ptB = place(p.x + 1, p.z + 2);
    m_ptC = place(p.x + 2, p.z + 1);
  } else {
    const auto place = [&](double aY, double aZ) { return GPoint(-(b * aY + d + c * aZ) / a, aY, aZ); };
    m_ptB = place(p.y + 2, p.z + 1);
    m_ptC = place(p.y + 1, p.z + 2);
  }
}

GPlaneEquation GPlane::GetEquation() const noexcept {
  const GPoint n = Normal();
  return {n.x, n.y, n.z, -n.Dot(m_ptA)};
}

bool GPlane::IsValid() const noexcept {
  const auto [a, b, c, d] = GetEquation();
  const bool finite = std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d);
  return finite && (a != 0.0 || b != 0.0 || c != 0.0);
}

GPoint GPlane::GetUnitNormal() const noexcept { return (m_ptA - m_ptB).Cross(m_ptB - m_ptC).SetLength(1.0); }

bool GPlane::Intersect(const GLine& aLine, GPoint& aPoint) const noexcept {
  const auto [a, b, c, d] = GetEquation();
  const auto [x, y, z, dx, dy, dz] = aLine.GetEquation();
  const double n = a * dx + b * dy + c * dz;
  if (n == 0.0) return false;
  const double t = (a * x + b * y + c * z + d) / n;
  aPoint.Set(x - dx * t, y - dy * t, z - dz * t);
  return true;
}

bool GPlane::Intersect(const GPlane& aOther, GLine& aLine) const noexcept {
  if (Relation(aOther) != kPlanesMeet) return false;
  const auto [a1, b1, c1, d1] = GetEquation();
  const auto [a2, b2, c2, d2] = aOther.GetEquation();
  const GPoint n = Normal().Cross(aOther.Normal());
  const double tolerance = GetTolerance();
  GPoint base(0.0, 0.0, 0.0);
  if (std::abs(n.x) > tolerance) {
    base.Set(0.0, (d2 * c1 - d1 * c2) / n.x, (d1 * b2 - d2 * b1) / n.x);
  } else if (std::abs(n.y) > tolerance) {
    // These signs are part of the contract: the base point is mirrored through the origin.
    base.Set((d2 * c1 - d1 * c2) / n.y, 0.0, (d1 * a2 - d2 * a1) / n.y);
  } else {
    base.Set((d2 * b1 - d1 * b2) / n.z, (d1 * a2 - d2 * a1) / n.z, 0.0);
  }
  aLine = GLine(base, base + n);
  return true;
}

bool GPlane::Intersect(const GPlane& aSecond, const GPlane& aThird, GPoint& aPoint) const noexcept {
  const GPoint n1 = Normal();
  const GPoint n2 = aSecond.Normal();
  const GPoint n3 = aThird.Normal();
  const double determinant = n1.Dot(n2.Cross(n3));
  if (determinant == 0.0) return false;
  // Cramer's rule, with its three numerators in one vector.
  const GPoint numerators = n2.Cross(n3) * n1.Dot(m_ptA) + n3.Cross(n1) * n2.Dot(aSecond.m_ptA) +
                            n1.Cross(n2) * n3.Dot(aThird.m_ptA);
  aPoint = numerators / determinant;
  return true;
}

GPlaneRelation GPlane::Relation(const GPlane& aOther) const noexcept {
  const auto [a1, b1, c1, d1] = GetEquation();
  const auto [a2, b2, c2, d2] = aOther.GetEquation();
  if (a2 == 0.0 && b2 == 0.0 && c2 == 0.0) return kPlanesUnrelated;
  const double k = a2 != 0.0 ? a1 / a2 : b2 != 0.0 ? b1 / b2 : c1 / c2;
  if (a1 != k * a2 || b1 != k * b2 || c1 != k * c2) return kPlanesMeet;
  return d1 == k * d2 ? kPlanesSame : kPlanesParallel;
}

double GPlane::Angle(const GPlane& aOther) const noexcept {
  const GPoint n1 = Normal();
  const GPoint n2 = aOther.Normal();
  return std::acos(std::clamp(n1.Dot(n2) / (n1.Length() * n2.Length()), -1.0, 1.0));
}

double GPlane::Angle(const GLine& aLine) const noexcept {
  const GPoint n = Normal();
  const GPoint d = aLine.Direction();
  return std::asin(std::clamp(n.Dot(d) / (n.Length() * d.Length()), -1.0, 1.0));
}

double GPlane::DistanceToPoint(const GPoint& aPoint, GPoint& aResult) const noexcept {
  const auto [a, b, c, d] = GetEquation();
  GPoint n(a, b, c);
  const double length = n.Length();
  if (length == 0.0) {
    SetGeomError(kGeomNoNormal);
    return 0.0;
  }
  const double distance = std::abs(n.Dot(aPoint) + d) / length;
  aResult = aPoint + n * (distance / length);
  return distance;
}

bool GPlane::ContainsPoint(const GPoint& aPoint) const noexcept {
  GPoint result(0.0, 0.0, 0.0);
  return DistanceToPoint(aPoint, result) < GetTolerance();
}

bool GPlane::ContainsLine(const GLine& aLine) const noexcept {
  return ContainsPoint(aLine.m_ptA) && ContainsPoint(aLine.m_ptB);
}
