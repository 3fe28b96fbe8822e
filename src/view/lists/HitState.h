// HitState: the part of the GL state that decides whether a selection finds a primitive, as far as a list
// sets it. Draw thread; Apply and Current need GL current.

#pragma once

#include <cstdint>

/// Values are GL's constants. 0 means that the list has not set the value.
struct HitState {
  std::uint16_t m_uFrontMode = 0, m_uBackMode = 0;  ///< glPolygonMode
  std::uint16_t m_uCulling = 0;                     ///< GL_CULL_FACE for enabled, kOff for disabled
  std::uint16_t m_uCullFace = 0;
  std::uint16_t m_uFrontFace = 0;
  std::uint16_t m_uEdgeFlag = 0;  ///< kOn or kOff

  static constexpr std::uint16_t kOff = 1, kOn = 2;

  /// Sends the values that are not 0 to GL.
  void Apply() const noexcept;
  /// Replaces the values that aLater sets.
  void Overlay(const HitState& aLater) noexcept;
  /// Returns the current values of GL.
  static HitState Current() noexcept;

  bool operator==(const HitState&) const = default;
};
