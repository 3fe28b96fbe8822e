// Settings and constants of the geometry kernel. The kernel is a complete library, and the component does not
// use some of its operations: comparisons of points, sums of matrices, conversions of lines and planes
// between coordinate systems, the setter of the tolerance. The tolerance and the error code are relaxed
// atomics: any thread reads and sets them, and the last value applies.

#pragma once

#include <atomic>

// Pi and derived constants. These exact digits are part of the results: angles are compared and reduced with
// them.
inline constexpr double kPi = 3.14159265359;
inline constexpr double kHalfPi = 1.570796326795;
inline constexpr double kTwoPi = 2.0 * 3.14159265359;
inline constexpr double kDegreesFromRadians = 57.29577951308;
inline constexpr double kRadiansFromDegrees = 0.017453292;

/// Codes of geometric failures that a result does not show.
enum GeomError : int {
  kGeomNoError = 0,
  kGeomZeroLength = 1,   ///< a length or a divisor is zero
  kGeomNoDirection = 3,  ///< a line without a direction
  kGeomNoNormal = 4,     ///< a plane without a normal
};

/// Tolerance of all comparisons within a tolerance.
inline std::atomic<double> g_dTolerance{1e-07};
/// Code of the last geometric failure. Successful operations do not reset it: clear it before an operation to
/// test that operation.
inline std::atomic<int> g_iGeomError{kGeomNoError};

inline double GetTolerance() noexcept { return g_dTolerance.load(std::memory_order_relaxed); }

/// Sets the tolerance.
/// @return false for a negative value; nothing changes
bool SetTolerance(double aTolerance) noexcept;

inline void SetGeomError(GeomError aError) noexcept { g_iGeomError.store(aError, std::memory_order_relaxed); }

/// Returns the angle with this cosine and sine, from -pi/2 to 3*pi/2. Both arguments are clamped to -1 to 1.
double AngleFromCosSin(double aCos, double aSin) noexcept;
