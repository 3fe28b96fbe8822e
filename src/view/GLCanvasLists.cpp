// GLCanvas: compiled lists. The context stores them under list keys. Draw thread.

#include "component/GLContextSite.h"
#include "diagnostics/GLErrorCheck.h"
#include "view/GLCanvas.h"

namespace {

HRESULT Refuse(const char* aOperation) noexcept {
  LogDebug(
      "IGLCanvas::%s is refused: it is called outside a pass, or a list is open (Begin) or not open (End)",
      aOperation);
  return E_GL_BADSTATE;
}

}  // namespace

// A key is an unsigned 32-bit handle and may use the sign bit. The interface passes it as an int with the
// same bits.

HRESULT GLCanvas::BeginCompileList(int* aList) noexcept {
  if (aList == nullptr) return E_INVALIDARG;
  *aList = 0;
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere() || site->IsListOpen()) return Refuse("BeginCompileList");
  const GLErrorCheck check("IGLCanvas::BeginCompileList");
  const ULONG key = site->BeginListKey();
  if (site->GetListBase(key) == 0) return E_FAIL;
  m_pRecorder = site->Recorder();
  *aList = static_cast<int>(key);
  m_uAppliedVersion = 0;  // a list must contain all attributes that it needs
  return S_OK;
}

HRESULT GLCanvas::EndCompileList() noexcept {
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere() || !site->IsListOpen()) return Refuse("EndCompileList");
  const GLErrorCheck check("IGLCanvas::EndCompileList");
  m_pRecorder = nullptr;
  site->EndListKey();
  m_uAppliedVersion = 0;  // attributes compiled into the list have not been executed
  return S_OK;
}

HRESULT GLCanvas::DrawCompiledList(int aList) noexcept {
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere()) return Refuse("DrawCompiledList");
  site->CallListKey(static_cast<ULONG>(aList));
  return S_OK;
}

HRESULT GLCanvas::DeleteCompiledList(int aList) noexcept {
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere()) return Refuse("DeleteCompiledList");
  site->DeleteListKey(static_cast<ULONG>(aList), 1);
  return S_OK;
}

HRESULT GLCanvas::IsCompiledList(int aList, LONG* aValid) noexcept {
  if (aValid == nullptr) return E_INVALIDARG;
  *aValid = 0;
  const GLSiteLink::Use site(m_pContext.get());
  if (!site || !site->IsCurrentHere()) return Refuse("IsCompiledList");
  *aValid = site->IsListKeyValid(static_cast<ULONG>(aList)) ? 1 : 0;
  return S_OK;
}
