// IGLFog.

#pragma once

#include <gllib/GLTypes.h>

/// How fog thickens with the distance (OpenGL 1.1, 3.10).
enum eGLFogCalcMode : int {
  GLFM_CALCULATE_LINEAR = 1,           ///< between start and end
  GLFM_CALCULATE_EXPONENT = 2,         ///< by the density
  GLFM_CALCULATE_EXPONENT_SQUARE = 4,  ///< by the density, squared
};

/// The fog of a context.
struct IGLFog : IUnknown {
  static constexpr IID Identifier = {
      0x17503790, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT Enable(LONG aEnable) noexcept = 0;
  virtual HRESULT IsEnabled(LONG* aEnabled) noexcept = 0;
  virtual HRESULT GetCalcMode(eGLFogCalcMode* aMode) noexcept = 0;
  virtual HRESULT SetCalcMode(eGLFogCalcMode aMode) noexcept = 0;
  virtual HRESULT GetFogDensity(float* aValue) noexcept = 0;
  virtual HRESULT SetFogDensity(float aValue) noexcept = 0;
  virtual HRESULT GetFogStart(float* aValue) noexcept = 0;
  virtual HRESULT GetFogEnd(float* aValue) noexcept = 0;
  virtual HRESULT SetFogStartAndEnd(float aStart, float aEnd) noexcept = 0;
  virtual HRESULT GetFogColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT SetFogColor(GLDATA_RGBA* aColor) noexcept = 0;

 protected:
  ~IGLFog() = default;
};
