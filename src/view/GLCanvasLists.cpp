// GLCanvas: compiled lists, which the context keeps by keys. Draw thread.

#include "component/ContextSite.h"
#include "view/GLCanvas.h"

// A key is a 32-bit handle that may fill its sign bit; the interface hands it out as an int of the same bits.

HRESULT GLCanvas::BeginCompileList(int* aList) noexcept {
  if (aList == nullptr) return E_INVALIDARG;
  *aList = 0;
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere() || site->IsListOpen()) return E_GL_BADSTATE;
  const ULONG key = site->BeginListKey();
  if (site->GetListBase(key) == 0) return E_FAIL;
  m_pRecorder = site->Recorder();
  *aList = static_cast<int>(key);
  m_uAppliedVersion = 0;  // a list has all that it needs, wherever it is drawn
  return S_OK;
}

HRESULT GLCanvas::EndCompileList() noexcept {
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere() || !site->IsListOpen()) return E_GL_BADSTATE;
  m_pRecorder = nullptr;
  site->EndListKey();
  m_uAppliedVersion = 0;  // what went into the list has not reached GL
  return S_OK;
}

HRESULT GLCanvas::DrawCompiledList(int aList) noexcept {
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere()) return E_GL_BADSTATE;
  site->CallListKey(static_cast<ULONG>(aList));
  return S_OK;
}

HRESULT GLCanvas::DeleteCompiledList(int aList) noexcept {
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere()) return E_GL_BADSTATE;
  site->DeleteListKey(static_cast<ULONG>(aList), 1);
  return S_OK;
}

HRESULT GLCanvas::IsCompiledList(int aList, LONG* aValid) noexcept {
  if (aValid == nullptr) return E_INVALIDARG;
  *aValid = 0;
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere()) return E_GL_BADSTATE;
  *aValid = site->IsListKeyValid(static_cast<ULONG>(aList)) ? 1 : 0;
  return S_OK;
}
