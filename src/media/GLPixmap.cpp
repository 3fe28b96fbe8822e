// GLPixmap: made by CreateGLPixmap.

#include "component/Catalogue.h"

HRESULT CreateGLPixmap(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
