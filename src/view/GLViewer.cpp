// GLViewer: the values that a host sets and reads. Any thread; no GL calls.

#include "view/GLViewer.h"

#include <gllib/GLClasses.h>

#include <algorithm>
#include <new>

#include "component/Catalogue.h"
#include "component/CreateObject.h"
#include "component/Module.h"
#include "component/Output.h"
#include "component/Values.h"

HRESULT CreateGLViewer(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLViewer>(aOuter, riid, ppv);
}

GLViewer::GLViewer()
    : m_pGauges(CreateObject<IGLCollection>(CLSID_GLCollection)),
      m_pCoord(CreateObject<IGLCoord>(CLSID_GLCoord)) {
  if (!m_pGauges || !m_pCoord) throw std::bad_alloc();
  m_pCoord->SetOrigin3d(0.0, 0.0, 1.0);
}

GLViewer::~GLViewer() { RemoveAllGauges(); }

HRESULT GLViewer::Show(LONG aShow) noexcept {
  m_bVisible = aShow != 0;
  return S_OK;
}

HRESULT GLViewer::IsVisible(LONG* aVisible) noexcept { return Output(aVisible, m_bVisible); }

HRESULT GLViewer::SetOrtho(LONG aOrtho) noexcept {
  m_bOrtho = aOrtho != 0;
  return S_OK;
}

HRESULT GLViewer::IsOrtho(LONG* aOrtho) noexcept { return Output(aOrtho, m_bOrtho); }

HRESULT GLViewer::ShowGauges(LONG aShow) noexcept {
  m_bGaugesVisible = aShow != 0;
  return S_OK;
}

HRESULT GLViewer::AreGaugesVisible(LONG* aVisible) noexcept { return Output(aVisible, m_bGaugesVisible); }

HRESULT GLViewer::Clip(LONG aClip) noexcept {
  m_bClipped = aClip != 0;
  return S_OK;
}

HRESULT GLViewer::IsClipped(LONG* aClipped) noexcept { return Output(aClipped, m_bClipped); }

HRESULT GLViewer::ScaleClip(LONG aScale) noexcept {
  m_bClipScaled = aScale != 0;
  return S_OK;
}

HRESULT GLViewer::IsClipScaled(LONG* aScaled) noexcept { return Output(aScaled, m_bClipScaled); }

HRESULT GLViewer::ShowClipFrame(LONG aShow) noexcept {
  m_bClipFrameVisible = aShow != 0;
  return S_OK;
}

HRESULT GLViewer::IsClipFrameVisible(LONG* aVisible) noexcept {
  return Output(aVisible, m_bClipFrameVisible);
}

HRESULT GLViewer::GetEyeFovy_DEG(double* aFovy) noexcept { return Output(aFovy, m_dEyeFovy); }

// The range checks below are written so that NaN is rejected too.

HRESULT GLViewer::SetEyeFovy_DEG(double aFovy) noexcept {
  if (!(aFovy >= 0.0 && aFovy < 180.0)) return E_GL_BADVALUE;
  m_dEyeFovy = aFovy;
  return S_OK;
}

HRESULT GLViewer::GetEyeZNear(double* aValue) noexcept { return Output(aValue, m_EyeZ.Load().m_dNear); }

HRESULT GLViewer::GetEyeZFar(double* aValue) noexcept { return Output(aValue, m_EyeZ.Load().m_dFar); }

HRESULT GLViewer::SetEyeZNearAndFar(double aNear, double aFar) noexcept {
  if (!(aNear > 0.0 && aFar > aNear)) return E_GL_BADVALUE;
  m_EyeZ.Store({aNear, aFar});
  return S_OK;
}

HRESULT GLViewer::GetEyeAspect(double* aValue) noexcept { return Output(aValue, m_dEyeAspect); }

HRESULT GLViewer::SetEyeAspect(double aValue) noexcept {
  if (!(aValue > 0.0)) return E_GL_BADVALUE;
  m_dEyeAspect = aValue;
  return S_OK;
}

HRESULT GLViewer::GetOrthoExtents(GLDATA_POINT* aMin, GLDATA_POINT* aMax) noexcept {
  const auto [low, high] = m_OrthoExtents.Load();
  return Output(aMin, low, aMax, high);
}

HRESULT GLViewer::SetOrthoExtents(GLDATA_POINT* aMin, GLDATA_POINT* aMax) noexcept {
  if (aMin == nullptr || aMax == nullptr) return E_INVALIDARG;
  const auto apart = [](double aLeft, double aRight) { return aLeft < aRight || aLeft > aRight; };
  if (!apart(aMin->x, aMax->x) || !apart(aMin->y, aMax->y) || !apart(aMin->z, aMax->z)) return E_GL_BADVALUE;
  const auto [minX, maxX] = std::minmax({aMin->x, aMax->x});
  const auto [minY, maxY] = std::minmax({aMin->y, aMax->y});
  const auto [minZ, maxZ] = std::minmax({aMin->z, aMax->z});
  m_OrthoExtents.Store({{minX, minY, minZ}, {maxX, maxY, maxZ}});
  return S_OK;
}

HRESULT GLViewer::GetClipX(int* aValue) noexcept { return Output(aValue, m_ClipRectangle.Load().x); }

HRESULT GLViewer::GetClipY(int* aValue) noexcept { return Output(aValue, m_ClipRectangle.Load().y); }

HRESULT GLViewer::GetClipWidth(int* aValue) noexcept { return Output(aValue, m_ClipRectangle.Load().width); }

HRESULT GLViewer::GetClipHeight(int* aValue) noexcept {
  return Output(aValue, m_ClipRectangle.Load().height);
}

HRESULT GLViewer::SetClipRectangle(int aX, int aY, int aWidth, int aHeight) noexcept {
  if (aX < 0 || aY < 0 || aWidth <= 0 || aHeight <= 0) return E_GL_BADVALUE;
  m_ClipRectangle.Store({aX, aY, aWidth, aHeight});
  return S_OK;
}

HRESULT GLViewer::GetFrameColor(GLDATA_RGBA* aColor) noexcept { return Output(aColor, m_sFrameColor); }

HRESULT GLViewer::SetFrameColor(GLDATA_RGBA* aColor) noexcept {
  if (aColor == nullptr) return E_INVALIDARG;
  m_sFrameColor = *aColor;
  return S_OK;
}

HRESULT GLViewer::GetFrameThickness(float* aValue) noexcept { return Output(aValue, m_fFrameThickness); }

HRESULT GLViewer::SetFrameThickness(float aValue) noexcept {
  // Limits of the point size, not of the line width that draws the frame: existing hosts expect these limits.
  m_fFrameThickness = Limit(aValue, g_afPointSizeRange[0], g_afPointSizeRange[1]);
  return S_OK;
}

HRESULT GLViewer::GetFrameOffset(float* aValue) noexcept { return Output(aValue, m_fFrameOffset); }

HRESULT GLViewer::SetFrameOffset(float aValue) noexcept {
  if (!(aValue >= 0.0f && aValue < 1.0f)) return E_GL_BADVALUE;
  m_fFrameOffset = aValue;
  return S_OK;
}

HRESULT GLViewer::AddGauge(IGLViewerGauge* aGauge) noexcept {
  if (aGauge == nullptr) return E_INVALIDARG;
  LONG present = 0;
  m_pGauges->Has(aGauge, &present);
  return present == 0 ? m_pGauges->Add(aGauge) : S_OK;
}

HRESULT GLViewer::RemoveGauge(IGLViewerGauge* aGauge) noexcept {
  if (aGauge == nullptr) return E_INVALIDARG;
  m_pGauges->Remove(aGauge);
  return S_OK;
}

HRESULT GLViewer::RemoveAllGauges() noexcept {
  m_pGauges->Empty();
  return S_OK;
}

HRESULT GLViewer::EnumGauges(IGLCollection* aColl) noexcept {
  if (aColl == nullptr) return E_INVALIDARG;
  return m_pGauges->CopyTo(aColl);
}

HRESULT GLViewer::GetCoord(IGLCoord** aCS) noexcept { return OutputObject(aCS, m_pCoord); }

ViewSetup GLViewer::Setup(int aWidth, int aHeight) noexcept {
  ViewSetup setup;
  const ViewSetup::Rectangle whole{0, 0, aWidth, aHeight};
  const ViewSetup::Rectangle clip = m_ClipRectangle.Load();
  const Extents extents = m_OrthoExtents.Load();
  const Planes planes = m_EyeZ.Load();
  setup.m_bClipped = m_bClipped;
  setup.m_Visible = setup.m_bClipped ? clip : whole;
  setup.m_Viewport = setup.m_bClipped && m_bClipScaled ? clip : whole;
  setup.m_bOrtho = m_bOrtho;
  setup.m_sLow = extents.m_sLow;
  setup.m_sHigh = extents.m_sHigh;
  setup.m_dFovy = m_dEyeFovy;
  setup.m_dAspect = m_dEyeAspect;
  setup.m_dNear = planes.m_dNear;
  setup.m_dFar = planes.m_dFar;
  m_pCoord->GetMatrix6d(&setup.m_sEye);
  return setup;
}

HRESULT GLViewer::GetShowAxes(LONG* pbShowAxes) noexcept { return Output(pbShowAxes, m_bShowAxes); }

HRESULT GLViewer::SetShowAxes(LONG bShowAxes) noexcept {
  m_bShowAxes = bShowAxes != 0;
  return S_OK;
}
