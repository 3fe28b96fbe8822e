// GLFont: made by CreateGLFont.

#include "component/Catalogue.h"

HRESULT CreateGLFont(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
