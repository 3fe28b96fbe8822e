// GLContext: the frame cycle. All on the draw thread; m_Lock is held from the start of a frame to after its
// swap.

#include <gllib/IGLCoord.h>

#include "component/Module.h"
#include "context/GLContext.h"
#include "context/control/ContextTasks.h"
#include "platform/Com.h"
#include "platform/GL.h"
#include "platform/RenderingTurn.h"
#include "state/GLFog.h"
#include "state/GLLight.h"
#include "view/GLCanvas.h"
#include "view/GLViewer.h"

// Three phases: creation of the rendering context, frames, its end.
void GLContext::DrawThreadCallback(void* aContext) noexcept {
  const RenderingTurn turn;
  auto& context = *static_cast<GLContext*>(aContext);
  MarkDrawThread(&context);
  if (!context.m_bTearDown) {
    if (context.m_hRC != nullptr) {
      context.DrawFrame();
    } else {
      CoInitialize(nullptr);
      context.CreateRenderingContext();
    }
  } else if (context.m_hRC != nullptr) {
    context.DestroyRenderingContext();
  }
}

// The rendering context mustn't stay current on a thread that is gone.
void GLContext::DrawThreadEnd(void*) noexcept {
  const RenderingTurn turn;
  wglMakeCurrent(nullptr, nullptr);
  MarkDrawThread(nullptr);
}

void GLContext::DrawFrame() noexcept {
  BeginFrame();
  DrawViewers();
  EndFrame();
}

void GLContext::BeginFrame() noexcept {
  LockGL();
  DropStaleLists();
  const GLDATA_RGBA color = m_sBackgroundColor;
  glClearColor(color.m_fRed, color.m_fGreen, color.m_fBlue, color.m_fAlpha);
  if (m_bDepthEnabled) {
    glEnable(GL_DEPTH_TEST);
  } else {
    glDisable(GL_DEPTH_TEST);
  }
  glDepthFunc(GL_LEQUAL);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

void GLContext::DrawViewers() noexcept {
  GLPOSITION position{};
  GLPtr<IUnknown> member;
  for (m_pViewers->GetFirst(&position, member.Put()); member; m_pViewers->GetNext(&position, member.Put())) {
    auto& viewer = static_cast<IGLViewer&>(*member);
    LONG visible = 0;
    viewer.IsVisible(&visible);
    if (visible == 0) continue;
    SetupViewerPass(viewer);
    // The painter may detach itself while it draws.
    if (const auto painter = GLPtr<IGLPainter>::FromBorrowed(m_pPainter)) {
      painter->Draw(m_pCanvas.Get(), this, &viewer);
    }
    static_cast<GLViewer&>(viewer).DrawOverlay(m_pCanvas.Get(), this, *this);
    glFlush();
  }
}

void GLContext::EndFrame() noexcept {
  SwapBuffers(m_hDC);
  UnlockGL();
  CaptureFrame();
}

// Makes the GL state that a painter can count on.
void GLContext::SetupViewerPass(IGLViewer& aViewer) noexcept {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  static_cast<GLViewer&>(aViewer).PrepareProjection(m_iViewportWidth, m_iViewportHeight);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  static_cast<GLFog&>(*m_pFog).ApplyFog();
  SetupEye(aViewer);
  SetupClipPlanes();
  SetupLighting();
  static_cast<GLCanvas&>(*m_pCanvas).RefreshCachedSetup();
}

void GLContext::SetupEye(IGLViewer& aViewer) noexcept {
  GLPtr<IGLCoord> eye;
  GLDATA_MATRIX6D placement{};
  aViewer.GetCoord(eye.Put());
  if (eye) eye->GetMatrix6d(&placement);
  m_pCanvas->ResetModelview6d(&placement);
}

// The equations are made anew each time, in world coordinates, since the eye is already loaded.
void GLContext::SetupClipPlanes() noexcept {
  if (m_bClipResetDue) DisableAllClipPlanes();
  if (!m_bClipPlanes) return;
  for (const GLClipPlane& plane : m_aClipPlanes) SendClipPlane(plane);
}

void GLContext::DisableAllClipPlanes() noexcept {
  m_bClipResetDue = false;
  for (int i = 0; i < g_iMaxClipPlanes; ++i) glDisable(static_cast<GLenum>(GL_CLIP_PLANE0 + i));
}

void GLContext::SetupLighting() noexcept {
  if (!m_bLighting) {
    glDisable(GL_LIGHTING);
    return;
  }
  glEnable(GL_LIGHTING);
  glEnable(GL_COLOR_MATERIAL);
  glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
  const GLDATA_RGBA ambient = m_bAmbientLight ? GLDATA_RGBA(m_sAmbientLight) : GLDATA_RGBA{0, 0, 0, 1};
  const GLfloat components[4] = {ambient.m_fRed, ambient.m_fGreen, ambient.m_fBlue, ambient.m_fAlpha};
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, components);
  ApplyLights();
}

// A number that a destroyed light has left shines no more, unless another of this context's lights took it.
void GLContext::ApplyLights() noexcept {
  unsigned lit = 0;
  GLPOSITION position{};
  GLPtr<IUnknown> member;
  for (m_pLights->GetFirst(&position, member.Put()); member; m_pLights->GetNext(&position, member.Put())) {
    auto& light = static_cast<GLLight&>(static_cast<IGLLight&>(*member));
    const int name = light.ApplyLight(m_pCanvas.Get());
    if (name >= GL_LIGHT0) lit |= 1u << (name - GL_LIGHT0);
  }
  for (unsigned gone = m_uLitNumbers & ~lit, i = 0; gone != 0; gone >>= 1, ++i) {
    if ((gone & 1) != 0) glDisable(GL_LIGHT0 + i);
  }
  m_uLitNumbers = lit;
}
