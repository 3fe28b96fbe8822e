// GLTexture2D: made by CreateGLTexture2D.

#include "component/Catalogue.h"

HRESULT CreateGLTexture2D(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
