// GLContext: lifetime of the object, attached clients, LockGL and UnlockGL.
// Host threads create contexts and attach clients. The destructor runs on the thread of the last Release, or
// on a new thread.

#include "context/GLContext.h"

#include <gllib/GLClasses.h>

#include <utility>

#include "component/Catalogue.h"
#include "component/CreateObject.h"
#include "component/ModuleThreads.h"
#include "component/Output.h"
#include "context/control/ContextHold.h"
#include "context/window/ContextList.h"
#include "platform/ExitGate.h"
#include "platform/GL.h"
#include "platform/Log.h"
#include "view/GLCanvas.h"

namespace {

std::atomic<unsigned> g_uLastNumber{0};

}  // namespace

GLContext::GLContext() : m_uNumber(++g_uLastNumber), m_pLink(std::make_shared<GLSiteLink>(this)) {
  LogDebug("context %u created", m_uNumber);  // reads the log's variables before the draw thread starts
  AddToContextList(*this);
  m_Scene.m_pCanvas = CreateObject<IGLCanvas>(CLSID_GLCanvas);
  if (m_Scene.m_pCanvas) static_cast<GLCanvas*>(m_Scene.m_pCanvas.Get())->SetSite(m_pLink);
  m_Scene.m_pFog = CreateObject<IGLFog>(CLSID_GLFog);
  m_Scene.m_pViewers = CreateObject<IGLCollection>(CLSID_GLCollection);
  m_Scene.m_pLights = CreateObject<IGLCollection>(CLSID_GLCollection);
  m_Scene.m_pFonts = CreateObject<IGLCollection>(CLSID_GLCollection);
}

bool GLContext::IsUsable() const noexcept { return !IsInherited() && m_Scene.IsComplete(); }

void GLContext::FinalRelease() noexcept {
  // A frame that is still being drawn may add and release references again.
  if (m_bReleased.test_and_set()) return;
  // Resources of another process, and of a process that exits, are left unchanged.
  if (IsInherited() || ExitGate::IsClosed()) return;
  // The destructor waits for a cycle of the draw thread. A draw thread must not wait here: the awaited
  // thread may be waiting for it.
  if (DrawnHere() != nullptr) {
    RunOnModuleThread([this]() noexcept { delete this; });
  } else {
    delete this;
  }
}

GLContext::~GLContext() {
  const LogContext log(m_uNumber);
  m_bReleased.test_and_set();
  {
    const std::scoped_lock replaced(m_ReplaceLock);
  }  // waits for a running OnSysColorChange; later ones do nothing
  if (const auto thread = DrawThread()) {
    thread->RequestSuspend();
    thread->EndSleep();  // the end does not wait for a long pause
  }
  SuspendDrawThread();
  if (const auto thread = DrawThread()) thread->RemoveEvents(this);
  m_pLink->Clear();
  if (m_Window.m_hWnd != nullptr) SetWindowLongPtrA(m_Window.m_hWnd, GWLP_USERDATA, 0);
  RemoveFromContextList(*this);
  ReleaseScene();
  EndDrawThread();
  const PLock lock(m_Lock);
  if (m_Window.m_hWnd != nullptr) {
    if (m_Window.m_Target.m_hDC != nullptr) ReleaseDC(m_Window.m_hWnd, m_Window.m_Target.m_hDC);
    EndWindow(m_Window.m_hWnd);
  }
  if (m_Window.m_hPalette != nullptr) DeleteObject(m_Window.m_hPalette);
}

// Clients and members are released without the lock, because their destructors may call any operation.
void GLContext::ReleaseScene() noexcept {
  GLPtr<IGLPainter> painter;
  GLPtr<IGLCapture> capture;
  SceneMembers members;
  const PLock lock(m_Lock);
  painter = m_Painter.Exchange(nullptr);
  capture = m_Capture.Exchange(nullptr);
  members = std::exchange(m_Scene, SceneMembers());
}

// Waits for all running calls to the client that is replaced. On the draw thread it does not wait, since such
// a call may be in progress on that thread.
template <class Client>
HRESULT GLContext::Attach(ClientSlot<Client>& aSlot, Client* aClient) noexcept {
  if (aClient != nullptr && aSlot.Holds(aClient)) return S_OK;
  GLPtr<Client> old;  // released after the locks
  std::optional<ContextHold> calls;
  if (!IsDrawThread() && !calls.emplace(*this, m_ClientCalls)) return E_GL_BADSTATE;
  const ContextHold hold(*this, m_Lock);
  if (!hold) return E_GL_BADSTATE;
  old = aSlot.Exchange(aClient);
  return S_OK;
}

HRESULT GLContext::AttachPainter(IGLPainter* aPainter) noexcept {
  if (aPainter == nullptr) return E_INVALIDARG;
  if (m_Painter.Holds(aPainter)) return S_OK;
  const HRESULT result = Attach(m_Painter, aPainter);
  const auto thread = DrawThread();
  if (SUCCEEDED(result) && thread != nullptr) thread->EndSleep();  // shows the first picture without delay
  return result;
}

HRESULT GLContext::DetachPainter() noexcept { return Attach<IGLPainter>(m_Painter, nullptr); }

HRESULT GLContext::AttachCapture(IGLCapture* aCapture) noexcept {
  return aCapture != nullptr ? Attach(m_Capture, aCapture) : E_INVALIDARG;
}

HRESULT GLContext::DetachCapture() noexcept { return Attach<IGLCapture>(m_Capture, nullptr); }

HRESULT GLContext::GetCanvas(IGLCanvas** ppICanvas) noexcept {
  return OutputObject(ppICanvas, m_Scene.m_pCanvas, E_GL_BADSTATE);
}

// A task on the draw thread needs a pass of the window. Other callers need only the lock: inside a pass the
// rendering context is already current, and other threads cannot have it.
void GLContext::LockGL() noexcept {
  if (IsDrawThread() && (m_TaskPass || GLPass::Here() == nullptr)) {
    if (m_iTaskLocks++ == 0) m_TaskPass.emplace(m_Lock, m_Window.m_Target);
  } else {
    m_Lock.Enter();
  }
}

void GLContext::UnlockGL() noexcept {
  if (!IsDrawThread() || !m_TaskPass) {
    m_Lock.Leave();
  } else if (--m_iTaskLocks == 0) {
    m_TaskPass.reset();
  }
}

ULONG GLContext::WindowContextNumber() const noexcept {
  if (!IsCurrentHere()) return 0;
  const GLRenderTarget& target = GLPass::Here()->Target();
  return &target == &m_Window.m_Target ? target.m_uNumber : 0;
}

bool GLContext::IsCurrentHere() const noexcept {
  if (!IsDrawThread()) return false;
  const GLPass* pass = GLPass::Here();
  return pass != nullptr && pass->IsCurrent();
}

const GLPass* GLContext::PictureHere() const noexcept {
  if (!IsDrawThread()) return nullptr;
  const GLPass* pass = GLPass::Here();
  return pass != nullptr && pass->DrawsPicture() ? pass : nullptr;
}

int GLContext::ViewportWidth() const noexcept {
  const GLPass* picture = PictureHere();
  return picture != nullptr ? picture->Width() : int(m_Settings.m_iViewportWidth);
}

int GLContext::ViewportHeight() const noexcept {
  const GLPass* picture = PictureHere();
  return picture != nullptr ? picture->Height() : int(m_Settings.m_iViewportHeight);
}

HRESULT CreateGLContext(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLContext>(aOuter, riid, ppv);
}
