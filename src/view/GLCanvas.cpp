// GLCanvas: construction, and GL state that a painter pushes and pops. Draw thread.

#include "view/GLCanvas.h"

#include <utility>

#include "component/Catalogue.h"
#include "component/Output.h"
#include "diagnostics/GLErrorCheck.h"
#include "platform/GL.h"
#include "view/lists/ListRecorder.h"

HRESULT CreateGLCanvas(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLCanvas>(aOuter, riid, ppv);
}

GLCanvas::GLCanvas() {
  for (std::size_t i = 0; i < 16; i += 5) {
    m_adCachedModelview[i] = 1.0;  // elements of the diagonal
    m_adCachedProjection[i] = 1.0;
  }
}

void GLCanvas::SetSite(GLSiteLinkPtr aLink) noexcept { m_pContext = std::move(aLink); }

// Called by operations whose effect on vertex positions or on hits the recorder of the open list cannot
// follow.
void GLCanvas::DrawsWhole() noexcept {
  if (m_pRecorder != nullptr) m_pRecorder->Unbounded();
}

HRESULT GLCanvas::EnableClipPlanes(LONG aEnable) noexcept {
  const GLErrorCheck check("IGLCanvas::EnableClipPlanes");
  DrawsWhole();
  const GLSiteLink::Use site(m_pContext.get());
  if (!site) return E_GL_BADSTATE;
  if (!site->HasClipPlanes()) return S_OK;
  const int planes = g_iMaxClipPlanes;
  for (int i = 0; i < planes; ++i) {
    const GLenum plane = GL_CLIP_PLANE0 + static_cast<GLenum>(i);
    if (aEnable != 0) {
      glEnable(plane);
    } else {
      glDisable(plane);
    }
  }
  return S_OK;
}

HRESULT GLCanvas::PushDepthAttribute() noexcept {
  const GLErrorCheck check("IGLCanvas::PushDepthAttribute");
  DrawsWhole();
  glPushAttrib(GL_DEPTH_BUFFER_BIT);
  glDisable(GL_DEPTH_TEST);
  return S_OK;
}

HRESULT GLCanvas::PushDepthMask(LONG bNewValue) noexcept {
  const GLErrorCheck check("IGLCanvas::PushDepthMask");
  DrawsWhole();
  glPushAttrib(GL_DEPTH_BUFFER_BIT);
  glDepthMask(bNewValue != 0 ? GL_TRUE : GL_FALSE);
  return S_OK;
}

HRESULT GLCanvas::PopDepthAttribute() noexcept {
  const GLErrorCheck check("IGLCanvas::PopDepthAttribute");
  DrawsWhole();
  glPopAttrib();
  return S_OK;
}

HRESULT GLCanvas::PushLightAttribute() noexcept {
  const GLErrorCheck check("IGLCanvas::PushLightAttribute");
  DrawsWhole();
  glPushAttrib(GL_LIGHTING_BIT);
  glDisable(GL_LIGHTING);
  return S_OK;
}

HRESULT GLCanvas::PopLightAttribute() noexcept {
  const GLErrorCheck check("IGLCanvas::PopLightAttribute");
  DrawsWhole();
  glPopAttrib();
  return S_OK;
}

HRESULT GLCanvas::PushAttrib(ULONG dwAttribMask) noexcept {
  const GLErrorCheck check("IGLCanvas::PushAttrib");
  DrawsWhole();
  glPushAttrib(dwAttribMask);
  return S_OK;
}

HRESULT GLCanvas::PopAttrib() noexcept {
  const GLErrorCheck check("IGLCanvas::PopAttrib");
  DrawsWhole();
  glPopAttrib();
  return S_OK;
}

HRESULT GLCanvas::SetCWWinding(LONG bValue) noexcept {
  const GLErrorCheck check("IGLCanvas::SetCWWinding");
  const GLenum front = bValue != 0 ? GL_CW : GL_CCW;
  glFrontFace(front);
  if (m_pRecorder != nullptr) m_pRecorder->State({.m_uFrontFace = static_cast<std::uint16_t>(front)});
  return S_OK;
}

HRESULT GLCanvas::SetSelectionMode(LONG bValue) noexcept {
  m_bSelectionMode = bValue;
  return S_OK;
}

HRESULT GLCanvas::GetSelectionMode(LONG* pbValue) noexcept { return Output(pbValue, m_bSelectionMode); }
