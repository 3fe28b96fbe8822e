// GLCollection: made by CreateGLCollection.

#include "component/Catalogue.h"

HRESULT CreateGLCollection(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
