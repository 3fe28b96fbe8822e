// GPoint: a point or a vector in double precision. A plain value; belongs to whoever holds it.

#pragma once

#include <cmath>
#include <type_traits>

#include "geometry/Geometry.h"

/// Three doubles, laid out as every other point structure, with which it is exchanged member by member.
class GPoint {
 public:
  /// Given as a tolerance, stands for the kernel's own.
  static constexpr double kModuleTolerance = -1.0;

  double x, y, z;

  constexpr GPoint(double aX, double aY, double aZ) noexcept : x(aX), y(aY), z(aZ) {}
  /// From a plain structure with members x, y and z.
  template <class Point>
  requires std::is_aggregate_v<Point> && requires(const Point& p) { p.x + p.y + p.z; }
  explicit constexpr GPoint(const Point& aPoint) noexcept : x(aPoint.x), y(aPoint.y), z(aPoint.z) {}
  /// As a plain structure that begins with x, y and z.
  template <class Point>
  requires std::is_aggregate_v<Point>
  constexpr Point As() const noexcept { return {x, y, z}; }

  constexpr void Set(double aX, double aY, double aZ) noexcept { *this = GPoint(aX, aY, aZ); }

  double Length() const noexcept { return std::sqrt(Dot(*this)); }
  double Distance(const GPoint& aOther) const noexcept { return (*this - aOther).Length(); }
  constexpr double Dot(const GPoint& aOther) const noexcept {
    return x * aOther.x + y * aOther.y + z * aOther.z;
  }
  /// this x aOther, right-handed.
  constexpr GPoint Cross(const GPoint& aOther) const noexcept {
    return {y * aOther.z - z * aOther.y, z * aOther.x - x * aOther.z, x * aOther.y - y * aOther.x};
  }

  constexpr GPoint operator+(const GPoint& aOther) const noexcept {
    return {x + aOther.x, y + aOther.y, z + aOther.z};
  }
  constexpr GPoint operator-(const GPoint& aOther) const noexcept {
    return {x - aOther.x, y - aOther.y, z - aOther.z};
  }
  constexpr GPoint operator*(double aFactor) const noexcept {
    return {x * aFactor, y * aFactor, z * aFactor};
  }
  /// Divided by 0 it stays as it is, and the error code tells.
  GPoint operator/(double aDivisor) const noexcept;
  constexpr GPoint& operator+=(const GPoint& aOther) noexcept { return *this = *this + aOther; }
  constexpr GPoint& operator-=(const GPoint& aOther) noexcept { return *this = *this - aOther; }
  constexpr GPoint& operator*=(double aFactor) noexcept { return *this = *this * aFactor; }
  GPoint& operator/=(double aDivisor) noexcept { return *this = *this / aDivisor; }

  // Strict order: exact, by x, then y, then z. The others add equality within the tolerance.
  bool operator<(const GPoint& aOther) const noexcept;
  bool operator>(const GPoint& aOther) const noexcept { return aOther < *this; }
  bool operator<=(const GPoint& aOther) const noexcept { return *this < aOther || IsEqual(aOther); }
  bool operator>=(const GPoint& aOther) const noexcept { return *this > aOther || IsEqual(aOther); }
  bool operator==(const GPoint& aOther) const noexcept { return IsEqual(aOther); }
  bool operator!=(const GPoint& aOther) const noexcept { return IsNotEqual(aOther); }

  // Tolerant comparison. Equal: below the tolerance in all members; not equal: above it in some member; at
  // exactly the tolerance neither holds.
  bool IsEqual(const GPoint& aOther, double aTolerance = kModuleTolerance) const noexcept;
  bool IsNotEqual(const GPoint& aOther, double aTolerance = kModuleTolerance) const noexcept;
  /// By the first member, x to z, that differs by more than the tolerance; false when none does.
  bool IsGreater(const GPoint& aOther, double aTolerance = kModuleTolerance) const noexcept;
  bool IsLess(const GPoint& aOther, double aTolerance = kModuleTolerance) const noexcept;
  /// Within the box with corners a and b, widened by the tolerance.
  bool IsBetween(const GPoint& a, const GPoint& b) const noexcept;

  /// The angle between two vectors, 0 to pi. A vector of length 0 gives 0 and sets the error code.
  double Angle(const GPoint& aOther) const noexcept;
  /// Scales this vector to a length. One of length 0 stays, and sets the error code.
  GPoint& SetLength(double aLength) noexcept;
  /// The part of this vector along a target; this vector itself when either is zero.
  GPoint Project(const GPoint& aTarget) const noexcept;
  static GPoint Max(const GPoint& a, const GPoint& b) noexcept;
  static GPoint Min(const GPoint& a, const GPoint& b) noexcept;
  /// Moves this point into the box with corners a and b, in whichever order they come.
  void Clamp(const GPoint& a, const GPoint& b) noexcept;

  // Right-handed rotations about the axes.
  void RotateAboutX_RAD(double aAngle) noexcept;
  void RotateAboutY_RAD(double aAngle) noexcept;
  void RotateAboutZ_RAD(double aAngle) noexcept;
  /// Turns this point about an axis direction through a pivot. Exact for a pivot at the origin or at a right
  /// angle to the axis; another pivot adds (1 - cos(aAngle)) times its part along the axis.
  void Rotate_RAD(double aAngle, const GPoint& aAxis, const GPoint& aPivot) noexcept;
};

static_assert(sizeof(GPoint) == 3 * sizeof(double) && std::is_trivially_copyable_v<GPoint>);
