// Vector: arithmetic of points and normals for the readers. Plain values.

#pragma once

#include <array>
#include <cmath>

using Vector = std::array<float, 3>;

inline Vector Difference(const Vector& a, const Vector& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

inline void Add(Vector& aSum, const Vector& a) {
  for (std::size_t axis = 0; axis < 3; ++axis) aSum[axis] += a[axis];
}

/// Returns the cross product.
inline Vector Cross(const Vector& a, const Vector& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Returns the direction with length 1; the z axis for the null vector.
inline Vector Normalized(const Vector& a) {
  const float length = std::hypot(a[0], a[1], a[2]);
  if (!(length > 0) || !std::isfinite(length)) return {0, 0, 1};
  return {a[0] / length, a[1] / length, a[2] / length};
}
