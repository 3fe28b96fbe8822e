// GLFog: fog settings of one context. Written by host threads, read by the draw thread. A colour may be read
// half written; all other values that one operation sets are read together.

#pragma once

#include <gllib/IGLFog.h>

#include "component/GLObject.h"
#include "platform/GL.h"
#include "thread/Guarded.h"
#include "thread/Relaxed.h"

class GLFog final : public GLObject<GLFog, IGLFog> {
 public:
  HRESULT Enable(LONG aEnable) noexcept override;
  HRESULT IsEnabled(LONG* aEnabled) noexcept override;
  HRESULT GetCalcMode(eGLFogCalcMode* aMode) noexcept override;
  HRESULT SetCalcMode(eGLFogCalcMode aMode) noexcept override;
  HRESULT GetFogDensity(float* aValue) noexcept override;
  HRESULT SetFogDensity(float aValue) noexcept override;
  HRESULT GetFogStart(float* aValue) noexcept override;
  HRESULT GetFogEnd(float* aValue) noexcept override;
  HRESULT SetFogStartAndEnd(float aStart, float aEnd) noexcept override;
  HRESULT GetFogColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT SetFogColor(GLDATA_RGBA* aColor) noexcept override;

  /// Sends the fog to GL, at the start of a viewer pass. Draw thread, with GL current.
  void ApplyFog() const noexcept;

 private:
  /// Distances from the eye.
  struct Range {
    float m_fStart, m_fEnd;
  };

  Relaxed<bool> m_bEnabled{false};
  Relaxed<GLint> m_iFogMode{GL_EXP};
  Relaxed<float> m_fDensity{0.01f};
  Guarded<Range> m_Range{{0.0f, 1000.0f}};
  RelaxedColor m_sColor{1.0f, 1.0f, 1.0f, 1.0f};
};
