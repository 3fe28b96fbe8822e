// GLLight: made by CreateGLLight.

#include "component/Catalogue.h"

HRESULT CreateGLLight(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
