// How lit faces reflect light.

#pragma once

#include <gllib/GLTypes.h>

enum eGLMatDrawMode : int {
  GLMM_ENABLE_FRONT = 1,
  GLMM_ENABLE_BACK = 2,
  GLMM_LIGHT_MODEL_LOCAL_VIEWER = 4,
  GLMM_LIGHT_MODEL_TWO_SIDE = 8
};

constexpr eGLMatDrawMode operator|(eGLMatDrawMode a, eGLMatDrawMode b) noexcept {
  return static_cast<eGLMatDrawMode>(static_cast<int>(a) | static_cast<int>(b));
}

/// Material.
struct IGLMaterial : IUnknown {
  static constexpr IID Identifier = {
      0x17503796, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT GetAmbientReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  virtual HRESULT SetAmbientReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  virtual HRESULT GetDiffuseReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  virtual HRESULT SetDiffuseReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  virtual HRESULT GetSpecularReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  virtual HRESULT SetSpecularReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  virtual HRESULT GetEmissionLight(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  virtual HRESULT SetEmissionLight(LONG aFront, GLDATA_RGBA* aRef) noexcept = 0;
  virtual HRESULT GetShininess(LONG aFront, float* aValue) noexcept = 0;
  virtual HRESULT SetShininess(LONG aFront, float aValue) noexcept = 0;
  virtual HRESULT EnableDrawMode(eGLMatDrawMode aMode, LONG aEnable) noexcept = 0;
  virtual HRESULT IsDrawModeEnabled(eGLMatDrawMode aMode, LONG* aEnabled) noexcept = 0;
  virtual HRESULT GetDrawMode(int* aMode) noexcept = 0;

 protected:
  ~IGLMaterial() = default;
};
