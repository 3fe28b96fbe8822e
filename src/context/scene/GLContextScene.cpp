// GLContext: viewers, lights, fog, switches and colours. Any thread, without a lock of the context. Changes
// take effect at the next frame or viewer pass.

#include <gllib/GLClasses.h>
#include <gllib/IGLLight.h>

#include "component/CreateObject.h"
#include "component/Output.h"
#include "component/Values.h"
#include "context/GLContext.h"

namespace {

HRESULT CopyOut(const GLPtr<IGLCollection>& aMembers, IGLCollection* aTarget) noexcept {
  if (aTarget == nullptr) return E_INVALIDARG;
  return aMembers ? aMembers->CopyTo(aTarget) : E_GL_BADSTATE;
}

HRESULT TakeOut(const GLPtr<IGLCollection>& aMembers, IUnknown* aMember) noexcept {
  if (aMember == nullptr) return E_INVALIDARG;
  return aMembers ? aMembers->Remove(aMember) : E_GL_BADSTATE;
}

/// Creates a member of a collection, which holds the only permanent reference to it.
template <class Interface>
HRESULT CreateMember(REFCLSID aClassId, const GLPtr<IGLCollection>& aMembers,
                     GLPtr<Interface>* aMember) noexcept {
  if (!aMembers) return E_GL_BADSTATE;
  *aMember = CreateObject<Interface>(aClassId);
  return *aMember && SUCCEEDED(aMembers->Add(aMember->Get())) ? S_OK : E_FAIL;
}

}  // namespace

HRESULT GLContext::CreateViewer(LONG aShow, LONG aOrtho, IGLViewer** aI) noexcept {
  if (aI == nullptr) return E_INVALIDARG;
  *aI = nullptr;
  GLPtr<IGLViewer> viewer;
  const HRESULT result = CreateMember(CLSID_GLViewer, m_Scene.m_pViewers, &viewer);
  if (FAILED(result)) return result;
  viewer->Show(aShow);
  viewer->SetOrtho(aOrtho);
  *aI = viewer.Get();
  return S_OK;
}

HRESULT GLContext::DestroyViewer(IGLViewer* aI) noexcept { return TakeOut(m_Scene.m_pViewers, aI); }

HRESULT GLContext::EnumViewers(IGLCollection* aColl) noexcept { return CopyOut(m_Scene.m_pViewers, aColl); }

HRESULT GLContext::CreateLight(IGLLight** aLight) noexcept {
  if (aLight == nullptr) return E_INVALIDARG;
  *aLight = nullptr;
  GLPtr<IGLLight> light;
  const HRESULT result = CreateMember(CLSID_GLLight, m_Scene.m_pLights, &light);
  if (SUCCEEDED(result)) *aLight = light.Get();
  return result;
}

HRESULT GLContext::DestroyLight(IGLLight* aLight) noexcept { return TakeOut(m_Scene.m_pLights, aLight); }

HRESULT GLContext::EnumLights(IGLCollection* aColl) noexcept { return CopyOut(m_Scene.m_pLights, aColl); }

HRESULT GLContext::GetFog(IGLFog** aFog) noexcept {
  return OutputObject(aFog, m_Scene.m_pFog, E_GL_BADSTATE);
}

HRESULT GLContext::EnableDepth(LONG aEnable) noexcept {
  m_Settings.m_bDepthEnabled = aEnable != 0;
  return S_OK;
}

HRESULT GLContext::IsDepthEnabled(LONG* aEnable) noexcept {
  return Output(aEnable, m_Settings.m_bDepthEnabled);
}

HRESULT GLContext::EnableLighting(LONG aEnable) noexcept {
  m_Settings.m_bLighting = aEnable != 0;
  return S_OK;
}

HRESULT GLContext::IsLightingEnabled(LONG* aEnabled) noexcept {
  return Output(aEnabled, m_Settings.m_bLighting);
}

HRESULT GLContext::EnableAmbientLight(LONG aEnable) noexcept {
  m_Settings.m_bAmbientLight = aEnable != 0;
  return S_OK;
}

HRESULT GLContext::IsAmbientLightEnabled(LONG* aEnabled) noexcept {
  return Output(aEnabled, m_Settings.m_bAmbientLight);
}

HRESULT GLContext::GetBackgroundColor(GLDATA_RGBA* aColor) noexcept {
  const GLPass* picture = PictureHere();
  return Output(aColor, picture != nullptr ? picture->Background() : m_Settings.m_sBackgroundColor);
}

HRESULT GLContext::SetBackgroundColor(GLDATA_RGBA* aColor) noexcept {
  if (aColor == nullptr) return E_INVALIDARG;
  m_Settings.m_sBackgroundColor = LimitColor(*aColor);
  return S_OK;
}

HRESULT GLContext::GetAmbientLight(GLDATA_RGBA* aLight) noexcept {
  return Output(aLight, m_Settings.m_sAmbientLight);
}

HRESULT GLContext::SetAmbientLight(GLDATA_RGBA* aLight) noexcept {
  return TakeOpaque(m_Settings.m_sAmbientLight, aLight);
}

HRESULT GLContext::get_bFSAA(LONG* pVal) noexcept { return Output(pVal, m_Window.m_bFSAA); }

HRESULT GLContext::put_bFSAA(LONG newVal) noexcept {
  m_Window.m_bFSAA = newVal;
  return S_OK;
}

HRESULT GLContext::get_lFSAAMaxSamples(LONG* pVal) noexcept {
  return Output(pVal, m_Window.m_lFSAAMaxSamples);
}

HRESULT GLContext::put_lFSAAMaxSamples(LONG newVal) noexcept {
  m_Window.m_lFSAAMaxSamples = newVal;
  return S_OK;
}
