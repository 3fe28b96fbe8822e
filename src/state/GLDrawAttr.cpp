// GLDrawAttr: made by CreateGLDrawAttr.

#include "component/Catalogue.h"

HRESULT CreateGLDrawAttr(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
