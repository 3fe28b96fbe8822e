/// @file
/// The fog of a context. Each context creates exactly one; IGLContext::GetFog returns it.

#pragma once

#include <gllib/GLTypes.h>

/// The formula of the fog factor at distance z from the eye. A factor of 1 shows the object's own colour, 0
/// the fog colour.
enum eGLFogCalcMode : int {
  GLFM_CALCULATE_LINEAR = 1,          ///< (end - z) / (end - start), from 1 down to 0
  GLFM_CALCULATE_EXPONENT = 2,        ///< e^-(density z)
  GLFM_CALCULATE_EXPONENT_SQUARE = 4  ///< e^-(density z)^2
};

/// Fog settings of one context. The draw thread sends them to GL at the start of each viewer pass. Initially
/// fog is off, exponential and white, with density 0.01, start 0 and end 1000.
///
/// Threads: any, at any time; no operation blocks. A change takes effect at the next viewer pass. A colour
/// may be seen half changed during one pass.
/// Results: S_OK; E_INVALIDARG when a pointer is null; other results are documented at the operation.
struct IGLFog : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x17503790, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  /// Switches fog on (non-zero) or off.
  virtual HRESULT Enable(LONG aEnable) noexcept = 0;
  /// Returns whether fog is on.
  /// @param aEnabled receives 1 or 0
  virtual HRESULT IsEnabled(LONG* aEnabled) noexcept = 0;

  /// Returns the formula.
  virtual HRESULT GetCalcMode(eGLFogCalcMode* aMode) noexcept = 0;
  /// Sets the formula.
  /// @param aMode any other value than linear and exponent is treated as exponent square
  virtual HRESULT SetCalcMode(eGLFogCalcMode aMode) noexcept = 0;

  /// Returns the density, per eye unit.
  virtual HRESULT GetFogDensity(float* aValue) noexcept = 0;
  /// Sets the density of the two exponential modes, per eye unit.
  /// @return S_OK; E_GL_BADVALUE if aValue is not greater than 0 (nothing changes)
  virtual HRESULT SetFogDensity(float aValue) noexcept = 0;

  /// Returns the distance where linear fog begins, in eye units.
  virtual HRESULT GetFogStart(float* aValue) noexcept = 0;
  /// Returns the distance where linear fog is complete, in eye units.
  virtual HRESULT GetFogEnd(float* aValue) noexcept = 0;
  /// Sets the distances from the eye between which linear fog increases, in eye units.
  /// @param aStart distance where fog begins; at least 0
  /// @param aEnd   distance where fog is complete; greater than aStart
  /// @return S_OK; E_GL_BADVALUE if the range is invalid or a value is NaN (nothing changes)
  virtual HRESULT SetFogStartAndEnd(float aStart, float aEnd) noexcept = 0;

  /// Returns the fog colour.
  /// @param aColor receives red, green and blue from 0 to 1; alpha is always 1
  virtual HRESULT GetFogColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the fog colour. Red, green and blue are clamped to 0 to 1.
  /// @param aColor its alpha is ignored
  virtual HRESULT SetFogColor(GLDATA_RGBA* aColor) noexcept = 0;

 protected:
  ~IGLFog() = default;
};
