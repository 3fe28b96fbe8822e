/// @file
/// GLLight: a light of a context. IGLContext::CreateLight makes one.

#pragma once

#include <gllib/GLTypes.h>

struct IGLCoord;

/// A spotlight or a distant light, sent to GL at the start of every viewer pass while the context's lighting
/// is on. It stands in a coordinate system of its own, so that moving that system moves the light.
///
/// A new one is off: a spotlight at 0, 0, 1 that shines to all sides, ambient and diffuse 0.5, specular 1, no
/// attenuation, direction 0, 0, -1, in a coordinate system that coincides with the world.
///
/// GL has eight lights a process here: a light takes a free number at its first pass and keeps it, shining or
/// not, to its end. With none free the light is left out and tries again at the next pass. A destroyed light
/// shines no more from the next viewer pass on.
///
/// Threads: any, at any time; no operation waits. A change shows at the next viewer pass, a colour or point
/// possibly in two steps.
/// Results: S_OK; E_INVALIDARG when a pointer is null; what else stands at the operation.
struct IGLLight : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x17503794, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Switches the light on (non-zero) or off.
  virtual HRESULT Enable(LONG aEnable) noexcept = 0;
  /// @param aEnabled receives 1 or 0
  virtual HRESULT IsEnabled(LONG* aEnabled) noexcept = 0;
  /// Makes it a spotlight (non-zero), which has a place, a cone and attenuation, or a distant light, which
  /// has a direction alone.
  virtual HRESULT SetAsSpotlight(LONG aSet) noexcept = 0;
  /// @param aSpotlight receives 1 or 0
  virtual HRESULT IsSpotlight(LONG* aSpotlight) noexcept = 0;

  // The colours. A setter cuts each of red, green and blue to 0 to 1 and ignores alpha, which stays 1.
  /// Gives the ambient colour; alpha is always 1.
  virtual HRESULT GetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Sets the ambient colour.
  virtual HRESULT SetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Gives the diffuse colour; alpha is always 1.
  virtual HRESULT GetDiffuseLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Sets the diffuse colour.
  virtual HRESULT SetDiffuseLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Gives the specular colour; alpha is always 1.
  virtual HRESULT GetSpecularLight(GLDATA_RGBA* aLight) noexcept = 0;
  /// Sets the specular colour.
  virtual HRESULT SetSpecularLight(GLDATA_RGBA* aLight) noexcept = 0;

  /// Gives a spotlight's place, in the light's coordinate system.
  virtual HRESULT GetSpotPosition(GLDATA_POINT* aVector) noexcept = 0;
  /// Places a spotlight, in the light's coordinate system.
  /// @return S_OK; E_GL_BADVALUE for 0, 0, 0: the place stays as it was
  virtual HRESULT SetSpotPosition(GLDATA_POINT* aVector) noexcept = 0;

  /// @param aAngle receives degrees: 0 to 90, or 180
  virtual HRESULT GetCutOffAngle_DEG(float* aAngle) noexcept = 0;
  /// Sets the angle between a spotlight's direction and the edge of its cone, in degrees: 0 to 90 by absolute
  /// value; above 90, or no number, becomes 180, which shines to all sides.
  virtual HRESULT SetCutOffAngle_DEG(float aAngle) noexcept = 0;
  /// @param aExponent receives 0 to 128
  virtual HRESULT GetSpotExponent(float* aExponent) noexcept = 0;
  /// Sets how much a spotlight's cone is brighter in the middle, cut to 0 (even) to 128.
  virtual HRESULT SetSpotExponent(float aExponent) noexcept = 0;

  // A spotlight at distance d is divided by constant + linear d + quadratic d^2.
  /// Gives the constant term.
  virtual HRESULT GetConstantAttenuation(float* aAtt) noexcept = 0;
  /// @return S_OK; E_GL_BADVALUE unless aAtt is above 0: the value stays as it was
  virtual HRESULT SetConstantAttenuation(float aAtt) noexcept = 0;
  /// Gives the linear term.
  virtual HRESULT GetLinearAttenuation(float* aAtt) noexcept = 0;
  /// @param aAtt below 0 becomes 0
  virtual HRESULT SetLinearAttenuation(float aAtt) noexcept = 0;
  /// Gives the quadratic term.
  virtual HRESULT GetQuadraticAttenuation(float* aAtt) noexcept = 0;
  /// @param aAtt below 0 becomes 0
  virtual HRESULT SetQuadraticAttenuation(float aAtt) noexcept = 0;

  /// Gives the light's coordinate system, through which a host moves the light.
  /// @param aCS receives a counted reference
  virtual HRESULT GetCoord(IGLCoord** aCS) noexcept = 0;
  /// Puts the light into another coordinate system, a viewer's for instance; lights and viewers may share
  /// one.
  /// @param aCS takes a reference of its own
  virtual HRESULT AttachCoord(IGLCoord* aCS) noexcept = 0;

  /// Gives where the light shines to, in its coordinate system.
  virtual HRESULT GetDirection(GLDATA_POINT* aVector) noexcept = 0;
  /// Sets where the light shines to, of any length, in the light's coordinate system.
  /// @return S_OK; E_GL_BADVALUE for 0, 0, 0 and for a component that isn't finite: the direction stays as it
  /// was
  virtual HRESULT SetDirection(GLDATA_POINT* aVector) noexcept = 0;

 protected:
  ~IGLLight() = default;
};
