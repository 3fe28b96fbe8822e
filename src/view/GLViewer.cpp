// GLViewer: made by CreateGLViewer.

#include "component/Catalogue.h"

HRESULT CreateGLViewer(IUnknown*, REFIID, void** ppv) noexcept {
  if (ppv != nullptr) *ppv = nullptr;
  return E_FAIL;
}
