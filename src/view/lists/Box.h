// Box: an axis-aligned box around vertices, in the coordinates that are sent to GL. A plain value.

#pragma once

#include <array>
#include <limits>

/// Initially empty. If a run enables culling, or one of its vertices is not finite, the recorder uses
/// Everything() as its box.
struct Box {
  static constexpr float kInfinity = std::numeric_limits<float>::infinity();

  std::array<float, 3> m_afLow{kInfinity, kInfinity, kInfinity};
  std::array<float, 3> m_afHigh{-kInfinity, -kInfinity, -kInfinity};

  bool IsEmpty() const noexcept { return m_afLow[0] > m_afHigh[0]; }

  void Add(float aX, float aY, float aZ) noexcept {
    const float vertex[] = {aX, aY, aZ};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      m_afLow[axis] = vertex[axis] < m_afLow[axis] ? vertex[axis] : m_afLow[axis];
      m_afHigh[axis] = vertex[axis] > m_afHigh[axis] ? vertex[axis] : m_afHigh[axis];
    }
  }

  void Add(const Box& aOther) noexcept {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      if (aOther.m_afLow[axis] < m_afLow[axis]) m_afLow[axis] = aOther.m_afLow[axis];
      if (aOther.m_afHigh[axis] > m_afHigh[axis]) m_afHigh[axis] = aOther.m_afHigh[axis];
    }
  }

  static constexpr Box Everything() noexcept {
    return {{-kInfinity, -kInfinity, -kInfinity}, {kInfinity, kInfinity, kInfinity}};
  }
};
