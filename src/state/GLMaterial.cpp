// GLMaterial: the operations. Values out of range are clamped, never rejected. Any thread.

#include "state/GLMaterial.h"

#include "component/Catalogue.h"
#include "component/Output.h"
#include "component/Values.h"

HRESULT CreateGLMaterial(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLMaterial>(aOuter, riid, ppv);
}

HRESULT GLMaterial::Get(LONG aFront, RelaxedColor Record::*aColor, GLDATA_RGBA* aRef) const noexcept {
  const Record& record = aFront != 0 ? m_sFront : m_sBack;
  return Output(aRef, record.*aColor);
}

HRESULT GLMaterial::Set(LONG aFront, RelaxedColor Record::*aColor, const GLDATA_RGBA* aRef) noexcept {
  Record& record = aFront != 0 ? m_sFront : m_sBack;
  return TakeOpaque(record.*aColor, aRef);
}

HRESULT GLMaterial::GetAmbientReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept {
  return Get(aFront, &Record::m_sAmbient, aRef);
}
HRESULT GLMaterial::SetAmbientReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept {
  return Set(aFront, &Record::m_sAmbient, aRef);
}
HRESULT GLMaterial::GetDiffuseReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept {
  return Get(aFront, &Record::m_sDiffuse, aRef);
}
HRESULT GLMaterial::SetDiffuseReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept {
  return Set(aFront, &Record::m_sDiffuse, aRef);
}
HRESULT GLMaterial::GetSpecularReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept {
  return Get(aFront, &Record::m_sSpecular, aRef);
}
HRESULT GLMaterial::SetSpecularReflectance(LONG aFront, GLDATA_RGBA* aRef) noexcept {
  return Set(aFront, &Record::m_sSpecular, aRef);
}
HRESULT GLMaterial::GetEmissionLight(LONG aFront, GLDATA_RGBA* aRef) noexcept {
  return Get(aFront, &Record::m_sEmission, aRef);
}
HRESULT GLMaterial::SetEmissionLight(LONG aFront, GLDATA_RGBA* aRef) noexcept {
  return Set(aFront, &Record::m_sEmission, aRef);
}

HRESULT GLMaterial::GetShininess(LONG aFront, float* aValue) noexcept {
  return Output(aValue, m_afShininess[aFront != 0 ? 0 : 1]);
}

HRESULT GLMaterial::SetShininess(LONG aFront, float aValue) noexcept {
  m_afShininess[aFront != 0 ? 0 : 1] = Limit(aValue, 0.0f, 1.0f);
  return S_OK;
}

HRESULT GLMaterial::EnableDrawMode(eGLMatDrawMode aMode, LONG aEnable) noexcept {
  if (aEnable != 0) {
    m_iDrawMode |= static_cast<int>(aMode);
  } else {
    m_iDrawMode &= ~static_cast<int>(aMode);
  }
  return S_OK;
}

HRESULT GLMaterial::IsDrawModeEnabled(eGLMatDrawMode aMode, LONG* aEnabled) noexcept {
  return Output(aEnabled, (m_iDrawMode & static_cast<int>(aMode)) != 0);
}

HRESULT GLMaterial::GetDrawMode(int* aMode) noexcept { return Output(aMode, m_iDrawMode.load()); }
