// PickVolume: the volume in which GL's selection mode finds primitives, in the coordinates that a list is
// drawn in. Draw thread, with GL current.

#pragma once

#include <array>

#include "view/lists/Box.h"

class PickVolume {
 public:
  /// Reads GL's matrices and the clip planes that are enabled.
  PickVolume() noexcept;

  /// Returns false only if GL rejects every primitive whose vertices lie in the box.
  bool MayTouch(const Box& aBox) const noexcept;

  bool operator==(const PickVolume&) const = default;

 private:
  /// A half-space: the points where the sum of the terms is at least 0. Weights are the sums of the
  /// magnitudes of the terms that GL computes; rounding errors are proportional to them.
  struct HalfSpace {
    std::array<double, 4> m_adTerms, m_adWeights;
    bool Excludes(const Box& aBox) const noexcept;
    bool operator==(const HalfSpace&) const = default;
  };
  static constexpr std::size_t kSides = 4;
  static constexpr std::size_t kMaxClipPlanes = 8;

  void AddClipPlanes(const double* aModelview) noexcept;

  std::array<HalfSpace, kSides + kMaxClipPlanes> m_aHalfSpaces{};
  std::size_t m_nHalfSpaces = 0;
};
