// GLCanvas: made by CreateGLCanvas.

#include "component/Catalogue.h"

HRESULT CreateGLCanvas(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
