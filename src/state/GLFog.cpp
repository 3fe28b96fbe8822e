// GLFog: the operations (any thread) and their application to GL (draw thread).

#include "state/GLFog.h"

#include "component/Catalogue.h"
#include "component/Output.h"
#include "component/Values.h"

HRESULT CreateGLFog(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLFog>(aOuter, riid, ppv);
}

HRESULT GLFog::Enable(LONG aEnable) noexcept {
  m_bEnabled = aEnable != 0;
  return S_OK;
}

HRESULT GLFog::IsEnabled(LONG* aEnabled) noexcept { return Output(aEnabled, m_bEnabled); }

HRESULT GLFog::GetCalcMode(eGLFogCalcMode* aMode) noexcept {
  const GLint mode = m_iFogMode;
  return Output(aMode, mode == GL_LINEAR ? GLFM_CALCULATE_LINEAR
                       : mode == GL_EXP  ? GLFM_CALCULATE_EXPONENT
                                         : GLFM_CALCULATE_EXPONENT_SQUARE);
}

HRESULT GLFog::SetCalcMode(eGLFogCalcMode aMode) noexcept {
  m_iFogMode = aMode == GLFM_CALCULATE_LINEAR     ? GL_LINEAR
               : aMode == GLFM_CALCULATE_EXPONENT ? GL_EXP
                                                  : GL_EXP2;  // also for unknown modes
  return S_OK;
}

HRESULT GLFog::GetFogDensity(float* aValue) noexcept { return Output(aValue, m_fDensity); }

HRESULT GLFog::SetFogDensity(float aValue) noexcept {
  if (!(aValue > 0.0f)) return E_GL_BADVALUE;  // written this way to reject NaN
  m_fDensity = aValue;
  return S_OK;
}

HRESULT GLFog::GetFogStart(float* aValue) noexcept { return Output(aValue, m_Range.Load().m_fStart); }

HRESULT GLFog::GetFogEnd(float* aValue) noexcept { return Output(aValue, m_Range.Load().m_fEnd); }

HRESULT GLFog::SetFogStartAndEnd(float aStart, float aEnd) noexcept {
  if (!(aStart >= 0.0f && aStart < aEnd)) return E_GL_BADVALUE;
  m_Range.Store({aStart, aEnd});
  return S_OK;
}

HRESULT GLFog::GetFogColor(GLDATA_RGBA* aColor) noexcept { return Output(aColor, m_sColor); }

HRESULT GLFog::SetFogColor(GLDATA_RGBA* aColor) noexcept { return TakeOpaque(m_sColor, aColor); }

void GLFog::ApplyFog() const noexcept {
  if (!m_bEnabled) {
    glDisable(GL_FOG);
    return;
  }
  const GLDATA_RGBA color = m_sColor;
  const Range range = m_Range.Load();
  glEnable(GL_FOG);
  glFogi(GL_FOG_MODE, m_iFogMode);
  // parameters of the other modes are sent too, so that a later mode uses current values
  glFogf(GL_FOG_DENSITY, m_fDensity);
  glFogf(GL_FOG_START, range.m_fStart);
  glFogf(GL_FOG_END, range.m_fEnd);
  glFogfv(GL_FOG_COLOR, &color.m_fRed);
}
