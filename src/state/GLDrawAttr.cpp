// GLDrawAttr: the operations. Values out of range are clamped, never rejected. Any thread.

#include "state/GLDrawAttr.h"

#include <algorithm>

#include "component/Catalogue.h"
#include "component/Output.h"
#include "component/Values.h"

HRESULT CreateGLDrawAttr(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLDrawAttr>(aOuter, riid, ppv);
}

namespace {

constexpr float Contrast(float aChannel) noexcept { return aChannel < 0.5f ? 1.0f : 0.0f; }

}  // namespace

/// Every setter ends with this call. A canvas then sends all attributes again, also if the value is
/// unchanged.
HRESULT GLDrawAttr::Modified() noexcept {
  if (m_uVersion.fetch_add(1, std::memory_order_release) == UINT32_MAX) ++m_uVersion;
  return S_OK;
}

HRESULT GLDrawAttr::GetColor(GLDATA_RGBA* aColor) noexcept { return Output(aColor, m_sColor); }

HRESULT GLDrawAttr::SetColor(GLDATA_RGBA* aColor) noexcept {
  if (aColor == nullptr) return E_INVALIDARG;
  m_sColor = LimitColor(*aColor);
  return Modified();
}

HRESULT GLDrawAttr::GetComplementColor(GLDATA_RGBA* aColor) noexcept {
  const GLDATA_RGBA color = m_sColor;
  return Output(
      aColor, GLDATA_RGBA{1.0f - color.m_fRed, 1.0f - color.m_fGreen, 1.0f - color.m_fBlue, color.m_fAlpha});
}

HRESULT GLDrawAttr::GetContrastColor(GLDATA_RGBA* aColor) noexcept {
  const GLDATA_RGBA color = m_sColor;
  return Output(aColor, GLDATA_RGBA{Contrast(color.m_fRed), Contrast(color.m_fGreen), Contrast(color.m_fBlue),
                                    color.m_fAlpha});
}

HRESULT GLDrawAttr::SetComponent(Relaxed<float>& aComponent, float aValue) noexcept {
  aComponent = LimitColor(aValue);
  return Modified();
}

HRESULT GLDrawAttr::GetRed(float* aValue) noexcept { return Output(aValue, m_sColor.m_fRed); }
HRESULT GLDrawAttr::SetRed(float aValue) noexcept { return SetComponent(m_sColor.m_fRed, aValue); }
HRESULT GLDrawAttr::GetGreen(float* aValue) noexcept { return Output(aValue, m_sColor.m_fGreen); }
HRESULT GLDrawAttr::SetGreen(float aValue) noexcept { return SetComponent(m_sColor.m_fGreen, aValue); }
HRESULT GLDrawAttr::GetBlue(float* aValue) noexcept { return Output(aValue, m_sColor.m_fBlue); }
HRESULT GLDrawAttr::SetBlue(float aValue) noexcept { return SetComponent(m_sColor.m_fBlue, aValue); }
HRESULT GLDrawAttr::GetAlpha(float* aValue) noexcept { return Output(aValue, m_sColor.m_fAlpha); }
HRESULT GLDrawAttr::SetAlpha(float aValue) noexcept { return SetComponent(m_sColor.m_fAlpha, aValue); }

HRESULT GLDrawAttr::GetPointSize(float* aValue) noexcept { return Output(aValue, m_fPointSize); }

HRESULT GLDrawAttr::SetPointSize(float aValue) noexcept {
  m_fPointSize = Limit(aValue, g_afPointSizeRange[0], g_afPointSizeRange[1]);
  return Modified();
}

HRESULT GLDrawAttr::GetPointSizeLimits(float* aMin, float* aMax) noexcept {
  return Output(aMin, g_afPointSizeRange[0], aMax, g_afPointSizeRange[1]);
}

HRESULT GLDrawAttr::GetPointSizeStep(float* aValue) noexcept {
  return Output(aValue, g_fPointSizeGranularity);
}

HRESULT GLDrawAttr::GetLineWidth(float* aValue) noexcept { return Output(aValue, m_fLineWidth); }

HRESULT GLDrawAttr::SetLineWidth(float aValue) noexcept {
  m_fLineWidth = Limit(aValue, g_afLineWidthRange[0], g_afLineWidthRange[1]);
  return Modified();
}

HRESULT GLDrawAttr::GetLineWidthLimits(float* aMin, float* aMax) noexcept {
  return Output(aMin, g_afLineWidthRange[0], aMax, g_afLineWidthRange[1]);
}

HRESULT GLDrawAttr::GetLineWidthStep(float* aValue) noexcept {
  return Output(aValue, g_fLineWidthGranularity);
}

HRESULT GLDrawAttr::GetLineStipplePattern(std::uint16_t* aPattern) noexcept {
  return Output(aPattern, m_usLineStipplePattern);
}

HRESULT GLDrawAttr::SetLineStipplePattern(std::uint16_t aPattern) noexcept {
  m_usLineStipplePattern = aPattern;
  return Modified();
}

HRESULT GLDrawAttr::GetLineStippleFactor(int* aFactor) noexcept {
  return Output(aFactor, m_iLineStippleFactor);
}

HRESULT GLDrawAttr::SetLineStippleFactor(int aFactor) noexcept {
  m_iLineStippleFactor = std::max(aFactor, 1);
  return Modified();
}

HRESULT GLDrawAttr::EnableDrawMode(eGLDrawMode aMode, LONG aEnable) noexcept {
  if (aEnable != 0) {
    m_iDrawMode |= static_cast<int>(aMode);
  } else {
    m_iDrawMode &= ~static_cast<int>(aMode);
  }
  return Modified();
}

HRESULT GLDrawAttr::IsDrawModeEnabled(eGLDrawMode aMode, LONG* aEnabled) noexcept {
  return Output(aEnabled, (m_iDrawMode & static_cast<int>(aMode)) != 0);
}

HRESULT GLDrawAttr::GetDrawMode(int* aMode) noexcept { return Output(aMode, m_iDrawMode.load()); }
