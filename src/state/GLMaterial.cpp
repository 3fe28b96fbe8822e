// GLMaterial: made by CreateGLMaterial.

#include "component/Catalogue.h"

HRESULT CreateGLMaterial(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
