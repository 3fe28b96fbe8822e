// Settings of the geometry kernel, and the angle from cosine and sine. Any thread.

#include "geometry/Geometry.h"

#include <algorithm>
#include <cmath>

bool SetTolerance(double aTolerance) noexcept {
  if (aTolerance < 0.0) return false;
  g_dTolerance.store(aTolerance, std::memory_order_relaxed);
  return true;
}

double AngleFromCosSin(double aCos, double aSin) noexcept {
  const double fromCos = std::acos(std::clamp(aCos, -1.0, 1.0));
  const double fromSin = std::asin(std::clamp(aSin, -1.0, 1.0));
  return fromCos <= kHalfPi ? fromSin : kPi - fromSin;
}
