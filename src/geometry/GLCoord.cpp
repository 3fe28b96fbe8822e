// GLCoord: made by CreateGLCoord.

#include "component/Catalogue.h"

HRESULT CreateGLCoord(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
