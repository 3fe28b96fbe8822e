// GLTexture1D: made by CreateGLTexture1D.

#include "component/Catalogue.h"

HRESULT CreateGLTexture1D(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
