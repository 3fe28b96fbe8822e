// GLContext: life of the object, attached callbacks, the lock bracket.
// Construction and attaching on host threads; the end on the thread of the last Release, or one of its own.

#include "context/GLContext.h"

#include <gllib/GLClasses.h>

#include "component/Catalogue.h"
#include "component/CreateObject.h"
#include "component/ModuleThreads.h"
#include "context/window/ContextList.h"
#include "platform/GL.h"
#include "platform/RenderingTurn.h"
#include "view/GLCanvas.h"

GLContext::GLContext() : m_iNextClipPlane(GL_CLIP_PLANE0), m_pLink(std::make_shared<GLSiteLink>(this)) {
  AddToContextList(*this);
  m_pCanvas = CreateObject<IGLCanvas>(CLSID_GLCanvas);
  if (m_pCanvas) static_cast<GLCanvas*>(m_pCanvas.Get())->SetSite(m_pLink);
  m_pFog = CreateObject<IGLFog>(CLSID_GLFog);
  m_pViewers = CreateObject<IGLCollection>(CLSID_GLCollection);
  m_pLights = CreateObject<IGLCollection>(CLSID_GLCollection);
  m_pFonts = CreateObject<IGLCollection>(CLSID_GLCollection);
}

bool GLContext::IsUsable() const noexcept {
  return m_pCanvas && m_pFog && m_pViewers && m_pLights && m_pFonts;
}

void GLContext::FinalRelease() noexcept {
  // A frame that is still being drawn may count the context up and down again.
  if (m_bReleased.test_and_set()) return;
  // The end waits for a cycle: on a draw thread, of another context too, for one that may wait for this one.
  if (DrawnHere() != nullptr) {
    RunOnModuleThread([this]() noexcept { delete this; });
  } else {
    delete this;
  }
}

GLContext::~GLContext() {
  m_bReleased.test_and_set();
  {
    const std::scoped_lock replaced(m_ReplaceLock);
  }  // a change of colours that runs ends; none begins any more
  SuspendDrawThread();
  if (const auto thread = DrawThread()) thread->RemoveEvents(this);
  m_pLink->Clear();
  if (m_hWnd != nullptr) SetWindowLongPtrA(m_hWnd, GWLP_USERDATA, 0);
  RemoveMessageHook(*this);
  {
    const PLock lock(m_Lock);
    RemoveFromContextList(*this);
    m_pCanvas.Reset();
    if (IGLPainter* painter = m_pPainter.exchange(nullptr)) painter->Release();
    if (IGLCapture* capture = m_pCapture.exchange(nullptr)) capture->Release();
    m_pFog.Reset();
    m_pViewers.Reset();
    m_pLights.Reset();
    m_pFonts.Reset();
    EndDrawThread();
    if (m_hWnd != nullptr) {
      if (m_hDC != nullptr) ReleaseDC(m_hWnd, m_hDC);
      EndWindow(m_hWnd);
    }
    if (m_hPalette != nullptr) DeleteObject(m_hPalette);
  }
}

HRESULT GLContext::AttachPainter(IGLPainter* aPainter) noexcept {
  if (aPainter == nullptr) return E_INVALIDARG;
  if (aPainter == m_pPainter) return S_OK;
  const PLock lock(m_Lock);
  aPainter->AddRef();
  if (IGLPainter* old = m_pPainter.exchange(aPainter)) old->Release();
  return S_OK;
}

HRESULT GLContext::DetachPainter() noexcept {
  const PLock lock(m_Lock);
  if (IGLPainter* old = m_pPainter.exchange(nullptr)) old->Release();
  return S_OK;
}

HRESULT GLContext::AttachCapture(IGLCapture* aCapture) noexcept {
  if (aCapture == nullptr) return E_INVALIDARG;
  if (aCapture == m_pCapture) return S_OK;
  const PLock lock(m_Lock);
  aCapture->AddRef();
  if (IGLCapture* old = m_pCapture.exchange(aCapture)) old->Release();
  return S_OK;
}

HRESULT GLContext::DetachCapture() noexcept {
  const PLock lock(m_Lock);
  if (IGLCapture* old = m_pCapture.exchange(nullptr)) old->Release();
  return S_OK;
}

HRESULT GLContext::GetCanvas(IGLCanvas** ppICanvas) noexcept {
  if (ppICanvas == nullptr) return E_INVALIDARG;
  *ppICanvas = GLPtr(m_pCanvas).Detach();
  return *ppICanvas != nullptr ? S_OK : E_GL_BADSTATE;
}

// Only the draw thread makes the rendering context current; elsewhere the bracket is the lock alone.
// A draw thread takes its turn before the lock, so that nobody waits for both at once.
void GLContext::LockGL() noexcept {
  if (DrawnHere() == this) RenderingTurn::Begin();
  m_Lock.Enter();
  if (!IsDrawThread()) return;
  const HGLRC context = m_hRC;
  if (context != wglGetCurrentContext()) wglMakeCurrent(m_hDC, context);
}

void GLContext::UnlockGL() noexcept {
  m_Lock.Leave();
  if (DrawnHere() == this) RenderingTurn::End();
}

ULONG GLContext::WindowContextNumber() const noexcept {
  return m_hRC != nullptr && m_hRC == wglGetCurrentContext() ? m_uContextNumber : 0;
}

bool GLContext::IsCurrentHere() const noexcept { return IsDrawThread() && wglGetCurrentContext() != nullptr; }

HRESULT CreateGLContext(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLContext>(aOuter, riid, ppv);
}
