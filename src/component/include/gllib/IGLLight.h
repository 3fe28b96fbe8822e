/// @file
/// GLLight: a light of a context. IGLContext::CreateLight creates it.

#pragma once

#include <gllib/GLTypes.h>

struct IGLCoord;

/// A spotlight or a distant light. The draw thread sends it to GL at the start of each viewer pass while the
/// context's lighting is on. Each light has a coordinate system; moving that system moves the light.
///
/// A new light is off. It is a spotlight at 0, 0, 1 that shines in all directions, with ambient and diffuse
/// 0.5, specular 1, no attenuation and direction 0, 0, -1. Its coordinate system coincides with the world.
///
/// A process can use eight GL lights. A light takes a free GL light at its first pass and keeps it until it
/// is destroyed, also while it is off. If none is free, the light does not shine and tries again at the next
/// pass. A destroyed light has no effect from the next viewer pass on.
///
/// Threads: any, at any time; no operation blocks. A change takes effect at the next viewer pass. A colour
/// may be seen half changed during one pass.
///
/// Results: S_OK; E_INVALIDARG when a pointer is null; other results are documented at the operation.
struct IGLLight : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x17503794, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Switches the light on (non-zero) or off.
  virtual HRESULT Enable(LONG aEnable) noexcept = 0;
  /// Returns whether the light is on.
  /// @param aEnabled receives 1 or 0
  virtual HRESULT IsEnabled(LONG* aEnabled) noexcept = 0;
  /// Makes it a spotlight (non-zero), with position, cone and attenuation, or a distant light, with a
  /// direction only.
  virtual HRESULT SetAsSpotlight(LONG aSet) noexcept = 0;
  /// Returns whether this is a spotlight.
  /// @param aSpotlight receives 1 or 0
  virtual HRESULT IsSpotlight(LONG* aSpotlight) noexcept = 0;

  // The colours. A setter clamps red, green and blue to 0 to 1 and ignores alpha, which is always 1.
  /// Returns the ambient colour; alpha is always 1.
  virtual HRESULT GetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Sets the ambient colour.
  virtual HRESULT SetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Returns the diffuse colour; alpha is always 1.
  virtual HRESULT GetDiffuseLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Sets the diffuse colour.
  virtual HRESULT SetDiffuseLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Returns the specular colour; alpha is always 1.
  virtual HRESULT GetSpecularLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Sets the specular colour.
  virtual HRESULT SetSpecularLight(GLDATA_RGBA* aLight) noexcept = 0;

  /// Returns the position of a spotlight, in the light's coordinate system.
  virtual HRESULT GetSpotPosition(GLDATA_POINT* aVector) noexcept = 0;
  /// Sets the position of a spotlight, in the light's coordinate system.
  /// @return S_OK; E_GL_BADVALUE for 0, 0, 0 and for a component that is NaN (nothing changes)
  virtual HRESULT SetSpotPosition(GLDATA_POINT* aVector) noexcept = 0;

  /// Returns the cut-off angle.
  /// @param aAngle receives degrees: 0 to 90, or 180
  virtual HRESULT GetCutOffAngle_DEG(float* aAngle) noexcept = 0;
  /// Sets the angle between a spotlight's direction and the edge of its cone, in degrees. The absolute value
  /// is used. Values from 0 to 90 are kept; above 90 and NaN become 180: the light shines in all directions.
  virtual HRESULT SetCutOffAngle_DEG(float aAngle) noexcept = 0;
  /// Returns the spot exponent.
  /// @param aExponent receives 0 to 128
  virtual HRESULT GetSpotExponent(float* aExponent) noexcept = 0;
  /// Sets the spot exponent, clamped to 0 (uniform) to 128. A higher value makes the middle of the cone
  /// brighter than its edge.
  virtual HRESULT SetSpotExponent(float aExponent) noexcept = 0;

  // Attenuation divides a spotlight's colour at distance d by constant + linear d + quadratic d^2.
  /// Returns the constant term.
  virtual HRESULT GetConstantAttenuation(float* aAtt) noexcept = 0;
  /// Sets the constant term.
  /// @return S_OK; E_GL_BADVALUE if aAtt is not greater than 0 (nothing changes)
  virtual HRESULT SetConstantAttenuation(float aAtt) noexcept = 0;
  /// Returns the linear term.
  virtual HRESULT GetLinearAttenuation(float* aAtt) noexcept = 0;
  /// Sets the linear term.
  /// @param aAtt below 0 becomes 0
  virtual HRESULT SetLinearAttenuation(float aAtt) noexcept = 0;
  /// Returns the quadratic term.
  virtual HRESULT GetQuadraticAttenuation(float* aAtt) noexcept = 0;
  /// Sets the quadratic term.
  /// @param aAtt below 0 becomes 0
  virtual HRESULT SetQuadraticAttenuation(float aAtt) noexcept = 0;

  /// Returns the light's coordinate system. Hosts use it to move the light.
  /// @param aCS receives a counted reference
  virtual HRESULT GetCoord(IGLCoord** aCS) noexcept = 0;
  /// Attaches another coordinate system, for example a viewer's. Lights and viewers may share one.
  /// @param aCS the light takes a reference
  virtual HRESULT AttachCoord(IGLCoord* aCS) noexcept = 0;

  /// Returns the direction of the light, in its coordinate system.
  virtual HRESULT GetDirection(GLDATA_POINT* aVector) noexcept = 0;
  /// Sets the direction of the light, in its coordinate system, with any length.
  /// @return S_OK; E_GL_BADVALUE for 0, 0, 0 and for a component that is not finite (nothing changes)
  virtual HRESULT SetDirection(GLDATA_POINT* aVector) noexcept = 0;

 protected:
  ~IGLLight() = default;
};
