// GLContext: made by CreateGLContext.

#include "component/Catalogue.h"

HRESULT CreateGLContext(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
