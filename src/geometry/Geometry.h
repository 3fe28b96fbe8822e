// The settings and constants that the whole geometry kernel shares. The kernel is complete as a library of
// its own: some of its operations (comparisons of points, arithmetic of matrices, lines and planes between
// coordinate systems) have no caller but the tests. The two settings are relaxed atomics: any thread reads
// and sets them, the last one standing.

#pragma once

#include <atomic>

// The kernel's pi and its kin. These digits are part of the results: angles are compared and unwound with
// them.
inline constexpr double kPi = 3.14159265359;
inline constexpr double kHalfPi = 1.570796326795;
inline constexpr double kTwoPi = 2.0 * 3.14159265359;
inline constexpr double kDegreesFromRadians = 57.29577951308;
inline constexpr double kRadiansFromDegrees = 0.017453292;

/// Codes of geometric failures that a result doesn't show.
enum GeomError : int {
  kGeomNoError = 0,
  kGeomZeroLength = 1,   ///< a zero length or a zero divisor
  kGeomNoDirection = 3,  ///< a line with no direction
  kGeomNoNormal = 4,     ///< a plane with no normal
};

/// Comparison tolerance of everything that speaks of the tolerance.
inline std::atomic<double> g_dTolerance{1e-07};
/// Code of the last geometric failure. Only ever set: who wants to know clears it first.
inline std::atomic<int> g_iGeomError{kGeomNoError};

inline double GetTolerance() noexcept { return g_dTolerance.load(std::memory_order_relaxed); }

/// @return false for a negative tolerance, which changes nothing
bool SetTolerance(double aTolerance) noexcept;

inline void SetGeomError(GeomError aError) noexcept { g_iGeomError.store(aError, std::memory_order_relaxed); }

/// The angle with this cosine and sine, from -half pi to three halves pi. Both are first cut to -1 to 1.
double AngleFromCosSin(double aCos, double aSin) noexcept;
