/// @file
/// The fog of a context. One a context, made with it; IGLContext::GetFog hands it out.

#pragma once

#include <gllib/GLTypes.h>

/// How fog thickens with the distance z from the eye. The share of the object's own colour that is left:
enum eGLFogCalcMode : int {
  GLFM_CALCULATE_LINEAR = 1,          ///< (end - z) / (end - start), from 1 down to 0
  GLFM_CALCULATE_EXPONENT = 2,        ///< e^-(density z)
  GLFM_CALCULATE_EXPONENT_SQUARE = 4  ///< e^-(density z)^2
};

/// Fog settings of one context, sent to GL at the start of every viewer pass. A new one is off, exponential,
/// density 0.01, from 0 to 1000, white.
///
/// Threads: any, at any time; no operation waits. A change shows at the next viewer pass; a colour, or a
/// start and end pair, may be seen half-changed for that one pass.
/// Results: S_OK; E_INVALIDARG when a pointer is null; what else stands at the operation.
struct IGLFog : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x17503790, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Switches fog on (non-zero) or off.
  virtual HRESULT Enable(LONG aEnable) noexcept = 0;
  /// @param aEnabled receives 1 or 0
  virtual HRESULT IsEnabled(LONG* aEnabled) noexcept = 0;

  /// Gives the formula.
  virtual HRESULT GetCalcMode(eGLFogCalcMode* aMode) noexcept = 0;
  /// Chooses the formula.
  /// @param aMode a value that is neither linear nor exponent counts as exponent square
  virtual HRESULT SetCalcMode(eGLFogCalcMode aMode) noexcept = 0;

  /// Gives the density, per eye unit.
  virtual HRESULT GetFogDensity(float* aValue) noexcept = 0;
  /// Sets the density of the two exponential modes, per eye unit.
  /// @return S_OK; E_GL_BADVALUE unless aValue is above 0: the density stays as it was
  virtual HRESULT SetFogDensity(float aValue) noexcept = 0;

  /// Gives where linear fog begins, in eye units.
  virtual HRESULT GetFogStart(float* aValue) noexcept = 0;
  /// Gives where linear fog is complete, in eye units.
  virtual HRESULT GetFogEnd(float* aValue) noexcept = 0;
  /// Sets the distances from the eye between which linear fog thickens, in eye units.
  /// @param aStart where fog begins; 0 or more
  /// @param aEnd   where it is complete; above aStart
  /// @return S_OK; E_GL_BADVALUE when the two make no range (NaN included): both stay as they were
  virtual HRESULT SetFogStartAndEnd(float aStart, float aEnd) noexcept = 0;

  /// @param aColor receives red, green and blue from 0 to 1; alpha is always 1
  virtual HRESULT GetFogColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the fog colour, each of red, green and blue cut to 0 to 1.
  /// @param aColor its alpha is ignored
  virtual HRESULT SetFogColor(GLDATA_RGBA* aColor) noexcept = 0;

 protected:
  ~IGLFog() = default;
};
