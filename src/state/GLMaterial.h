// GLMaterial: GL material parameters of front and back faces, and the mode bits that select among them.
// Written by host threads, read by the draw thread. Each member is atomic; a group of members is not.

#pragma once

#include <gllib/IGLMaterial.h>

#include <atomic>

#include "component/GLObject.h"
#include "thread/Relaxed.h"

class GLMaterial final : public GLObject<GLMaterial, IGLMaterial> {
 public:
  HRESULT GetAmbientReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept override;
  HRESULT SetAmbientReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept override;
  HRESULT GetDiffuseReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept override;
  HRESULT SetDiffuseReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept override;
  HRESULT GetSpecularReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept override;
  HRESULT SetSpecularReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept override;
  HRESULT GetEmissionLight(LONG aFront, GLDATA_RGBA* aRef) noexcept override;
  HRESULT SetEmissionLight(LONG aFront, GLDATA_RGBA* aRef) noexcept override;
  HRESULT GetShininess(LONG aFront, float* aValue) noexcept override;
  HRESULT SetShininess(LONG aFront, float aValue) noexcept override;
  HRESULT EnableDrawMode(eGLMatDrawMode aMode, LONG aEnable) noexcept override;
  HRESULT IsDrawModeEnabled(eGLMatDrawMode aMode, LONG* aEnabled) noexcept override;
  HRESULT GetDrawMode(int* aMode) noexcept override;

 private:
  /// Colours of one side. The defaults are those of GL. No setter changes an alpha.
  struct Record {
    RelaxedColor m_sAmbient{0.2f, 0.2f, 0.2f, 1.0f};
    RelaxedColor m_sDiffuse{0.8f, 0.8f, 0.8f, 1.0f};
    RelaxedColor m_sSpecular{0.0f, 0.0f, 0.0f, 1.0f};
    RelaxedColor m_sEmission{0.0f, 0.0f, 0.0f, 1.0f};
  };
  HRESULT Get(LONG aFront, RelaxedColor Record::*aColor, GLDATA_RGBA* aRef) const noexcept;
  HRESULT Set(LONG aFront, RelaxedColor Record::*aColor, const GLDATA_RGBA* aRef) noexcept;

  Record m_sFront, m_sBack;
  Relaxed<float> m_afShininess[2]{0.0f, 0.0f};  // front, back; the canvas scales 0..1 to 0..128
  std::atomic<int> m_iDrawMode{GLMM_ENABLE_FRONT | GLMM_LIGHT_MODEL_LOCAL_VIEWER};
};
