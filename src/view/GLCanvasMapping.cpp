// GLCanvas: maps model points to window positions and back, with GL's current matrices or the cached set-up.
// Any thread with the cached set-up, which needs no GL call; otherwise the draw thread.

#include <algorithm>

#include "component/GLContextSite.h"
#include "platform/GL.h"
#include "view/GLCanvas.h"

// A canvas without a context uses the rendering context that is current.
bool GLCanvas::HasGL() const noexcept {
  if (const GLSiteLink::Use site(m_pContext.get()); site) return site->IsCurrentHere();
  return IsGLCurrent();
}

void GLCanvas::RefreshCachedSetup() noexcept {
  double modelview[16], projection[16];
  GLint viewport[4];
  glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
  glGetDoublev(GL_PROJECTION_MATRIX, projection);
  glGetIntegerv(GL_VIEWPORT, viewport);
  std::copy_n(modelview, 16, m_adCachedModelview.begin());
  std::copy_n(projection, 16, m_adCachedProjection.begin());
  std::copy_n(viewport, 4, m_aiCachedViewport.begin());
}

/// A copy of the cached set-up for GLU. It may mix values of two passes if the draw thread writes meanwhile.
struct GLCanvas::Setup {
  explicit Setup(const GLCanvas& aCanvas) noexcept {
    std::copy_n(aCanvas.m_adCachedModelview.begin(), 16, m_adModelview);
    std::copy_n(aCanvas.m_adCachedProjection.begin(), 16, m_adProjection);
    std::copy_n(aCanvas.m_aiCachedViewport.begin(), 4, m_aiViewport);
  }

  double m_adModelview[16] = {};
  double m_adProjection[16] = {};
  GLint m_aiViewport[4] = {};
};

HRESULT GLCanvas::GetWindowCoords(GLDATA_POINT* pModelCoord, LONG bUseCachedSetup,
                                  GLDATA_POINT* pWindowCoord) noexcept {
  if (pModelCoord == nullptr || pWindowCoord == nullptr) return E_INVALIDARG;
  if (bUseCachedSetup == 0) {
    if (!HasGL()) return E_GL_BADSTATE;
    RefreshCachedSetup();
  }
  const Setup setup(*this);
  GLDATA_POINT window = *pWindowCoord;  // keeps its value if GLU cannot map the point
  gluProject(pModelCoord->x, pModelCoord->y, pModelCoord->z, setup.m_adModelview, setup.m_adProjection,
             setup.m_aiViewport, &window.x, &window.y, &window.z);
  *pWindowCoord = window;
  return S_OK;
}

HRESULT GLCanvas::GetModelCoords(GLDATA_POINT* pWindowCoord, LONG bUseCachedSetup,
                                 GLDATA_POINT* pModelCoord) noexcept {
  if (pWindowCoord == nullptr || pModelCoord == nullptr) return E_INVALIDARG;
  if (bUseCachedSetup == 0) {
    if (!HasGL()) return E_GL_BADSTATE;
    RefreshCachedSetup();
  }
  const Setup setup(*this);
  GLDATA_POINT model = *pModelCoord;
  gluUnProject(pWindowCoord->x, pWindowCoord->y, pWindowCoord->z, setup.m_adModelview, setup.m_adProjection,
               setup.m_aiViewport, &model.x, &model.y, &model.z);
  *pModelCoord = model;
  return S_OK;
}
