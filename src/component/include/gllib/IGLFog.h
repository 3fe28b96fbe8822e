// The fog of a context.

#pragma once

#include <gllib/GLTypes.h>

enum eGLFogCalcMode : int {
  GLFM_CALCULATE_LINEAR = 1,
  GLFM_CALCULATE_EXPONENT = 2,
  GLFM_CALCULATE_EXPONENT_SQUARE = 4
};

/// Fog.
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
