// PickVolume: the volume in which GL's selection mode finds primitives, in the coordinates in which a list is
// drawn. Draw thread, with GL current.

#pragma once

#include <array>

#include "view/lists/Box.h"

class PickVolume {
 public:
  /// Reads GL's matrices and the enabled clip planes.
  PickVolume() noexcept;

  /// Returns false only if GL rejects every primitive whose vertices lie in the box.
  bool MayTouch(const Box& aBox) const noexcept;

  bool operator==(const PickVolume&) const = default;

 private:
  /// A half-space: the points where the sum of the terms is at least 0. The weights are the sums of the
  /// magnitudes of the terms that GL computes. Rounding errors are proportional to them.
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
