// IGLMaterial.

#pragma once

#include <gllib/GLTypes.h>

/// Bits of a material's mode; they combine freely.
enum eGLMatDrawMode : int {
  GLMM_ENABLE_FRONT = 1,              ///< the front record is applied
  GLMM_ENABLE_BACK = 2,               ///< the back record is applied
  GLMM_LIGHT_MODEL_LOCAL_VIEWER = 4,  ///< highlights by the real eye position
  GLMM_LIGHT_MODEL_TWO_SIDE = 8,      ///< back faces lit from their side; with GLMM_ENABLE_BACK
};

/// Material parameters of front and back faces, applied by IGLCanvas::SetMaterial.
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
