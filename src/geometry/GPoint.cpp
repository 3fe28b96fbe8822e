// GPoint: the longer functions. Any thread; one thread per object.

#include "geometry/GPoint.h"

#include <algorithm>

namespace {

constexpr double GPoint::*kMembers[] = {&GPoint::x, &GPoint::y, &GPoint::z};

double ToleranceOf(double aTolerance) noexcept {
  return aTolerance == GPoint::kModuleTolerance ? GetTolerance() : aTolerance;
}

}  // namespace

GPoint GPoint::operator/(double aDivisor) const noexcept {
  if (aDivisor == 0.0) {
    SetGeomError(kGeomZeroLength);
    return *this;
  }
  return {x / aDivisor, y / aDivisor, z / aDivisor};
}

bool GPoint::operator<(const GPoint& aOther) const noexcept {
  if (x != aOther.x) return x < aOther.x;
  if (y != aOther.y) return y < aOther.y;
  return z < aOther.z;
}

bool GPoint::IsEqual(const GPoint& aOther, double aTolerance) const noexcept {
  const double tolerance = ToleranceOf(aTolerance);
  return std::abs(x - aOther.x) < tolerance && std::abs(y - aOther.y) < tolerance &&
         std::abs(z - aOther.z) < tolerance;
}

bool GPoint::IsNotEqual(const GPoint& aOther, double aTolerance) const noexcept {
  const double tolerance = ToleranceOf(aTolerance);
  return std::abs(x - aOther.x) > tolerance || std::abs(y - aOther.y) > tolerance ||
         std::abs(z - aOther.z) > tolerance;
}

bool GPoint::IsGreater(const GPoint& aOther, double aTolerance) const noexcept {
  const double tolerance = ToleranceOf(aTolerance);
  for (const auto member : kMembers) {
    if (this->*member > aOther.*member + tolerance) return true;
    if (aOther.*member - tolerance > this->*member) return false;
  }
  return false;
}

bool GPoint::IsLess(const GPoint& aOther, double aTolerance) const noexcept {
  const double tolerance = ToleranceOf(aTolerance);
  for (const auto member : kMembers) {
    if (aOther.*member - tolerance > this->*member) return true;
    if (this->*member > aOther.*member + tolerance) return false;
  }
  return false;
}

bool GPoint::IsBetween(const GPoint& a, const GPoint& b) const noexcept {
  const double tolerance = GetTolerance();
  return std::ranges::all_of(kMembers, [&](auto aMember) {
    return this->*aMember >= std::min(a.*aMember, b.*aMember) - tolerance &&
           this->*aMember <= std::max(a.*aMember, b.*aMember) + tolerance;
  });
}

double GPoint::Angle(const GPoint& aOther) const noexcept {
  const double lengths = std::sqrt(Dot(*this) * aOther.Dot(aOther));
  if (lengths == 0.0) {
    SetGeomError(kGeomZeroLength);
    return 0.0;
  }
  return std::acos(std::clamp(Dot(aOther) / lengths, -1.0, 1.0));
}

GPoint& GPoint::SetLength(double aLength) noexcept {
  double length = Length();
  if (length == 0.0) {
    length = 1.0;
    SetGeomError(kGeomZeroLength);
  }
  return *this *= aLength / length;
}

GPoint GPoint::Project(const GPoint& aTarget) const noexcept {
  const bool noTarget = aTarget.x == 0.0 && aTarget.y == 0.0 && aTarget.z == 0.0;
  if (noTarget || Length() == 0.0) return *this;
  return GPoint(aTarget).SetLength(std::cos(Angle(aTarget)) * Length());
}

GPoint GPoint::Max(const GPoint& a, const GPoint& b) noexcept {
  return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
}

GPoint GPoint::Min(const GPoint& a, const GPoint& b) noexcept {
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
}

void GPoint::Clamp(const GPoint& a, const GPoint& b) noexcept {
  *this = Min(Max(*this, Min(a, b)), Max(a, b));
}

void GPoint::RotateAboutX_RAD(double aAngle) noexcept {
  const double c = std::cos(aAngle);
  const double s = std::sin(aAngle);
  Set(x, c * y - s * z, s * y + c * z);
}

void GPoint::RotateAboutY_RAD(double aAngle) noexcept {
  const double c = std::cos(aAngle);
  const double s = std::sin(aAngle);
  Set(s * z + c * x, y, c * z - s * x);
}

void GPoint::RotateAboutZ_RAD(double aAngle) noexcept {
  const double c = std::cos(aAngle);
  const double s = std::sin(aAngle);
  Set(c * x - s * y, s * x + c * y, z);
}

void GPoint::Rotate_RAD(double aAngle, const GPoint& aAxis, const GPoint& aPivot) noexcept {
  if (std::fmod(aAngle, kTwoPi) == 0.0) return;
  const double q = aAxis.Dot(aAxis);
  if (q == 0.0) return;
  // Splits the point itself along the axis, not its offset from the pivot.
  const GPoint along = aAxis * (aAxis.Dot(*this) / q);
  const GPoint across = (*this - aPivot) - along;
  if (std::fmod(aAngle, kPi) == 0.0) {
    *this = (along - across) + aPivot;
    return;
  }
  const double r = across.Dot(across);
  if (r == 0.0) return;
  const double c = std::cos(aAngle) * r;
  const GPoint s = aAxis * (std::sin(aAngle) * r / std::sqrt(q));
  Set((s.y * across.z - s.z * across.y + c * across.x) / r + along.x + aPivot.x,
      (s.z * across.x - s.x * across.z + c * across.y) / r + along.y + aPivot.y,
      (s.x * across.y - s.y * across.x + c * across.z) / r + along.z + aPivot.z);
}
