// GLFog: made by CreateGLFog.

#include "component/Catalogue.h"

HRESULT CreateGLFog(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
