// GPoint: a point or a vector in double precision. A plain value, not synchronised.

#pragma once

#include <cmath>
#include <type_traits>

#include "geometry/Geometry.h"

/// Three doubles with the layout of the other point structures. Conversions copy member by member.
class GPoint {
 public:
  /// As an argument, selects the tolerance of the kernel (GetTolerance).
  static constexpr double kModuleTolerance = -1.0;

  double x, y, z;

  constexpr GPoint(double aX, double aY, double aZ) noexcept : x(aX), y(aY), z(aZ) {}
  /// Converts from a plain structure with members x, y and z.
  template <class Point>
  requires std::is_aggregate_v<Point> && requires(const Point& p) { p.x + p.y + p.z; }
  explicit constexpr GPoint(const Point& aPoint) noexcept : x(aPoint.x), y(aPoint.y), z(aPoint.z) {}
  /// Converts to a plain structure that begins with x, y and z.
  template <class Point>
  requires std::is_aggregate_v<Point>
  constexpr Point As() const noexcept { return {x, y, z}; }

  constexpr void Set(double aX, double aY, double aZ) noexcept { *this = GPoint(aX, aY, aZ); }

  double Length() const noexcept { return std::sqrt(Dot(*this)); }
  double Distance(const GPoint& aOther) const noexcept { return (*this - aOther).Length(); }
  constexpr double Dot(const GPoint& aOther) const noexcept {
    return x * aOther.x + y * aOther.y + z * aOther.z;
  }
  /// Returns this x aOther, right-handed.
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
  /// Returns the quotient. Division by 0 returns the point unchanged and sets the error code.
  GPoint operator/(double aDivisor) const noexcept;
  constexpr GPoint& operator+=(const GPoint& aOther) noexcept { return *this = *this + aOther; }
  constexpr GPoint& operator-=(const GPoint& aOther) noexcept { return *this = *this - aOther; }
  constexpr GPoint& operator*=(double aFactor) noexcept { return *this = *this * aFactor; }
  GPoint& operator/=(double aDivisor) noexcept { return *this = *this / aDivisor; }

  // The strict order is exact: by x, then y, then z. <= and >= also accept equality within the tolerance.
  bool operator<(const GPoint& aOther) const noexcept;
  bool operator>(const GPoint& aOther) const noexcept { return aOther < *this; }
  bool operator<=(const GPoint& aOther) const noexcept { return *this < aOther || IsEqual(aOther); }
  bool operator>=(const GPoint& aOther) const noexcept { return *this > aOther || IsEqual(aOther); }
  bool operator==(const GPoint& aOther) const noexcept { return IsEqual(aOther); }
  bool operator!=(const GPoint& aOther) const noexcept { return IsNotEqual(aOther); }

  // Comparison within a tolerance. Equal: all members differ by less than the tolerance. Not equal: a member
  // differs by more. If the largest difference is exactly the tolerance, both functions return false.
  bool IsEqual(const GPoint& aOther, double aTolerance = kModuleTolerance) const noexcept;
  bool IsNotEqual(const GPoint& aOther, double aTolerance = kModuleTolerance) const noexcept;
  /// Compares the first member, x to z, that differs by more than the tolerance. Returns false if there is
  /// none.
  bool IsGreater(const GPoint& aOther, double aTolerance = kModuleTolerance) const noexcept;
  bool IsLess(const GPoint& aOther, double aTolerance = kModuleTolerance) const noexcept;
  /// Returns whether the point is in the box with corners a and b, extended by the tolerance.
  bool IsBetween(const GPoint& a, const GPoint& b) const noexcept;

  /// Returns the angle between two vectors, 0 to pi. A vector of length 0 returns 0 and sets the error code.
  double Angle(const GPoint& aOther) const noexcept;
  /// Scales this vector to a length. A vector of length 0 is unchanged and sets the error code.
  GPoint& SetLength(double aLength) noexcept;
  /// Returns the component of this vector along aTarget; this vector itself if either is zero.
  GPoint Project(const GPoint& aTarget) const noexcept;
  static GPoint Max(const GPoint& a, const GPoint& b) noexcept;
  static GPoint Min(const GPoint& a, const GPoint& b) noexcept;
  /// Moves this point into the box with the opposite corners a and b.
  void Clamp(const GPoint& a, const GPoint& b) noexcept;

  // Right-handed rotations about the axes.
  void RotateAboutX_RAD(double aAngle) noexcept;
  void RotateAboutY_RAD(double aAngle) noexcept;
  void RotateAboutZ_RAD(double aAngle) noexcept;
  /// Rotates this point about an axis through a pivot. The result is exact if the pivot is the origin or at a
  /// right angle to the axis. Any other pivot adds (1 - cos(aAngle)) times its component along the axis.
  void Rotate_RAD(double aAngle, const GPoint& aAxis, const GPoint& aPivot) noexcept;
};

static_assert(sizeof(GPoint) == 3 * sizeof(double) && std::is_trivially_copyable_v<GPoint>);
