// GLContext: the frame cycle, on the draw thread. m_Lock is held from the start of a frame until after
// SwapBuffers.

#include <utility>

#include "component/Module.h"
#include "context/GLContext.h"
#include "diagnostics/ClientCheck.h"
#include "diagnostics/GLErrorCheck.h"
#include "platform/Com.h"
#include "platform/GL.h"
#include "platform/RenderingTurn.h"
#include "state/GLFog.h"
#include "state/GLLight.h"
#include "view/GLCanvas.h"
#include "view/GLViewer.h"

// The cycles have three phases: they create the rendering context, draw frames, and destroy the rendering
// context. A cycle that runs only for tasks draws no frame.
void GLContext::DrawThreadCallback(void* aContext, unsigned aWake) noexcept {
  auto& context = *static_cast<GLContext*>(aContext);
  MarkDrawThread(&context);
  if (!context.m_bTearDown) {
    if (context.m_Window.m_Target.m_hRC != nullptr) {
      if (aWake != PThread::kTask && !context.m_bReleased.test()) context.DrawFrame();
    } else {
      CoInitialize(nullptr);
      if (context.CreateRenderingContext()) context.AllowParks();
    }
  } else if (context.m_Window.m_Target.m_hRC != nullptr) {
    context.DestroyRenderingContext();
  }
}

// The rendering context must not stay current on a thread that has ended.
void GLContext::DrawThreadEnd(void*) noexcept {
  const RenderingTurn turn;
  wglMakeCurrent(nullptr, nullptr);
  MarkDrawThread(nullptr);
}

void GLContext::DrawFrame() noexcept {
  {
    GLPtr<IGLPainter> painter;  // a painter that detaches itself is released after the lock
    const GLPass pass(m_Lock, m_Window.m_Target);
    if (pass.IsCurrent()) {  // otherwise painters would call GL without a rendering context
      painter = m_Painter.Get();
      BuildFonts();
      SetFrameState();
      CheckGLErrors("the start of a frame");
      DrawViewers();
      SwapBuffers(m_Window.m_Target.m_hDC);
    }
  }
  CaptureFrame();
}

// New buffers are uninitialised, and viewers clear only their own areas. So the first frames on a surface,
// and those after a change of its size, clear all of it.
void GLContext::SetFrameState() noexcept {
  const GLDATA_RGBA color = m_Settings.m_sBackgroundColor;
  glClearColor(color.m_fRed, color.m_fGreen, color.m_fBlue, color.m_fAlpha);
  GLRenderTarget& target = m_Window.m_Target;
  target.NoteSize(ViewportWidth(), ViewportHeight());
  if (target.m_iUncleared > 0) {
    --target.m_iUncleared;
    glDisable(GL_SCISSOR_TEST);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  }
  glDepthFunc(GL_LEQUAL);
  SetDepthTestAndBlending();
}

void GLContext::SetDepthTestAndBlending() noexcept {
  if (m_Settings.m_bDepthEnabled) {
    glEnable(GL_DEPTH_TEST);
  } else {
    glDisable(GL_DEPTH_TEST);
  }
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

void GLContext::DrawViewers() noexcept {
  const GLCanvas::Recording recording(static_cast<GLCanvas&>(*m_Scene.m_pCanvas), Recorder());
  GLPOSITION position{};
  GLPtr<IUnknown> member;
  for (m_Scene.m_pViewers->GetFirst(&position, member.Put()); member;
       m_Scene.m_pViewers->GetNext(&position, member.Put())) {
    auto& viewer = static_cast<GLViewer&>(static_cast<IGLViewer&>(*member));
    LONG visible = 0;
    viewer.IsVisible(&visible);
    if (visible == 0) continue;
    SetupViewerPass(viewer);
    CheckGLErrors("the set-up of a viewer");
    // The painter may detach itself while it draws.
    if (const auto painter = m_Painter.Get()) {
      const ClientCheck check("IGLPainter::Draw");
      NotePainterResult(painter->Draw(m_Scene.m_pCanvas.Get(), this, &viewer));
    }
    viewer.DrawOverlay(m_Scene.m_pCanvas.Get(), this, *this);
    CheckGLErrors("the overlay of a viewer");
    glFlush();
  }
}

// Logs only changes of the result, because a failing painter fails in every frame.
void GLContext::NotePainterResult(HRESULT aResult) noexcept {
  if (aResult == std::exchange(m_hPainterResult, aResult) || SUCCEEDED(aResult)) return;
  LogDebug("IGLPainter::Draw returned 0x%08x: the frame continues", static_cast<unsigned>(aResult));
}

// Sets the GL state that the contract guarantees to painters.
void GLContext::SetupViewerPass(GLViewer& aViewer) noexcept {
  auto& canvas = static_cast<GLCanvas&>(*m_Scene.m_pCanvas);
  const ViewSetup setup = aViewer.Setup(ViewportWidth(), ViewportHeight());
  if (PictureHere() == nullptr) aViewer.NoteWindowAspect(setup.Aspect());
  setup.ApplyProjection();
  static_cast<GLFog&>(*m_Scene.m_pFog).ApplyFog();
  setup.ApplyEye(canvas);
  SetupClipPlanes();
  SetupLighting();
  canvas.NoteRenderingContext(GLPass::Here()->Target().m_uNumber);
  canvas.RefreshCachedSetup();
}

// GL transforms the equations by the model-view matrix, which holds the eye. So they are sent in world
// coordinates at each pass.
void GLContext::SetupClipPlanes() noexcept {
  if (PictureHere() == nullptr) ResetGLClipPlanes();
  for (const GLClipPlane& plane : m_ClipPlanes.All()) SendClipPlane(plane);
}

// EnableClipPlanes of the canvas enables all of GL's planes. So a reset plane gets an equation that keeps
// every point.
void GLContext::ResetGLClipPlanes() noexcept {
  if (!m_ClipPlanes.TakeReset()) return;
  constexpr GLdouble kEverything[4] = {0, 0, 0, 0};
  for (int i = 0; i < g_iMaxClipPlanes; ++i) {
    const auto plane = static_cast<GLenum>(GL_CLIP_PLANE0 + i);
    glDisable(plane);
    glClipPlane(plane, kEverything);
  }
}

void GLContext::SetupLighting() noexcept {
  if (!m_Settings.m_bLighting) {
    glDisable(GL_LIGHTING);
    return;
  }
  glEnable(GL_LIGHTING);
  glEnable(GL_COLOR_MATERIAL);
  glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
  const GLDATA_RGBA ambient =
      m_Settings.m_bAmbientLight ? GLDATA_RGBA(m_Settings.m_sAmbientLight) : GLDATA_RGBA{0, 0, 0, 1};
  const GLfloat components[4] = {ambient.m_fRed, ambient.m_fGreen, ambient.m_fBlue, ambient.m_fAlpha};
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, components);
  ApplyLights();
}

// Applies all lights. Then disables the GL lights of destroyed ones, unless another light of this context now
// uses the number.
void GLContext::ApplyLights() noexcept {
  unsigned lit = 0;
  GLPOSITION position{};
  GLPtr<IUnknown> member;
  for (m_Scene.m_pLights->GetFirst(&position, member.Put()); member;
       m_Scene.m_pLights->GetNext(&position, member.Put())) {
    auto& light = static_cast<GLLight&>(static_cast<IGLLight&>(*member));
    const int name = light.ApplyLight(m_Scene.m_pCanvas.Get());
    if (name >= GL_LIGHT0) lit |= 1u << (name - GL_LIGHT0);
  }
  unsigned& litBefore = GLPass::Here()->Target().m_uLitNumbers;
  for (unsigned gone = litBefore & ~lit, i = 0; gone != 0; gone >>= 1, ++i) {
    if ((gone & 1) != 0) glDisable(GL_LIGHT0 + i);
  }
  litBefore = lit;
}
