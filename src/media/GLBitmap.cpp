// GLBitmap: made by CreateGLBitmap.

#include "component/Catalogue.h"

HRESULT CreateGLBitmap(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
