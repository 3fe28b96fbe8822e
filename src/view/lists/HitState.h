// HitState: the GL state that decides whether selection finds a primitive, as far as a list sets it.

#pragma once

#include <cstdint>

/// Values are GL's own; 0 stands for a value that the list has not set.
struct HitState {
  std::uint16_t m_uFrontMode = 0, m_uBackMode = 0;  ///< glPolygonMode
  std::uint16_t m_uCulling = 0;                     ///< GL_CULL_FACE for enabled, kOff for disabled
  std::uint16_t m_uCullFace = 0;
  std::uint16_t m_uFrontFace = 0;
  std::uint16_t m_uEdgeFlag = 0;  ///< kOn or kOff

  static constexpr std::uint16_t kOff = 1, kOn = 2;

  /// Sends the values that are set to GL.
  void Apply() const noexcept;
  /// Takes over what aLater sets.
  void Overlay(const HitState& aLater) noexcept;
  /// Reads all values from GL.
  static HitState Current() noexcept;

  bool operator==(const HitState&) const = default;
};
