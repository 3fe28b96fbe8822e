// GLMaterial: GL's material parameters for front and back faces, and the mode bits that choose among them.
// Host threads write, the draw thread reads; each member is atomic on its own, the whole is not.

#pragma once

#include <gllib/IGLMaterial.h>

#include <atomic>

#include "component/Object.h"
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
  /// The colours of one side, which start as GL's own. No setter touches an alpha.
  struct Record {
    RelaxedColor m_sAmbient{0.2f, 0.2f, 0.2f, 1.0f};
    RelaxedColor m_sDiffuse{0.8f, 0.8f, 0.8f, 1.0f};
    RelaxedColor m_sSpecular{0.0f, 0.0f, 0.0f, 1.0f};
    RelaxedColor m_sEmission{0.0f, 0.0f, 0.0f, 1.0f};
  };
  HRESULT Get(LONG aFront, RelaxedColor Record::*aColor, GLDATA_RGBA* aRef) const noexcept;
  HRESULT Set(LONG aFront, RelaxedColor Record::*aColor, const GLDATA_RGBA* aRef) noexcept;

  Record m_sFront, m_sBack;
  Relaxed<float> m_afShininess[2]{0.0f, 0.0f};  // front, back; the canvas makes 0 to 128 of 0 to 1
  std::atomic<int> m_iDrawMode{GLMM_ENABLE_FRONT | GLMM_LIGHT_MODEL_LOCAL_VIEWER};
};
