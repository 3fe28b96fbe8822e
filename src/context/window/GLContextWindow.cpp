// GLContext: the GL window, its window procedure, the rendering context, and their replacement.
// The window procedure runs on the thread that receives the window's messages. CreateGLWindow runs on the
// thread that calls Initialize, and in the window procedure after a change of the system's colours. The draw
// thread creates and destroys the rendering context.

#include <chrono>
#include <thread>

#include "component/Module.h"
#include "component/ModuleEnd.h"
#include "component/Output.h"
#include "context/GLContext.h"
#include "context/control/DrawThreadWait.h"
#include "context/window/ContextList.h"
#include "context/window/ParentPlacement.h"
#include "context/window/StartLimit.h"
#include "platform/DeviceContext.h"
#include "platform/ExitGate.h"
#include "platform/GL.h"
#include "platform/Log.h"
#include "platform/Palette.h"
#include "platform/ProcessWide.h"
#include "platform/RenderingTurn.h"

namespace {

using namespace std::chrono_literals;

constexpr char kWindowClass[] = "GLWindow_Class";
constexpr auto kPollStep = 10ms;
constexpr DWORD kPreferredCycle = 40, kMustSleepCycle = 10;
constexpr int kHighestPriority = 2;
constexpr DWORD kChildStyle = WS_CHILD | WS_VISIBLE | WS_DISABLED | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
constexpr DWORD kPopupStyle = WS_POPUP | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;

LRESULT GLWindowProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept {
  auto* context = reinterpret_cast<GLContext*>(GetWindowLongPtrA(hWnd, GWLP_USERDATA));
  if (context == nullptr) return DefWindowProcA(hWnd, uMsg, wParam, lParam);
  return context->WindowProc(hWnd, uMsg, wParam, lParam);
}

void UnregisterWindowClass() noexcept;

/// The window class. Registered at the first use and unregistered at the module's end. Otherwise the class
/// would keep a pointer to unloaded code, and a module that is loaded again could not register the name.
class GLWindowClass {
 public:
  void Unregister() noexcept {
    const std::scoped_lock hold(m_Lock);
    if (m_Atom != 0) UnregisterClassA(kWindowClass, ModuleInstance());
    m_Atom = 0;
  }

  /// Returns false if the system rejects the class.
  bool Register() noexcept {
    const std::scoped_lock hold(m_Lock);
    if (m_Atom != 0) return true;
    ModuleEnd::Register(UnregisterWindowClass);
    WNDCLASSA windowClass{};
    windowClass.lpszClassName = kWindowClass;
    windowClass.style = CS_VREDRAW | CS_HREDRAW | CS_OWNDC;
    windowClass.lpfnWndProc = GLWindowProc;
    windowClass.hInstance = ModuleInstance();
    windowClass.hCursor = LoadCursorA(nullptr, IDC_CROSS);
    m_Atom = RegisterClassA(&windowClass);
    return m_Atom != 0;
  }

 private:
  std::mutex m_Lock;
  ATOM m_Atom = 0;
};

constinit ProcessWide<GLWindowClass> g_WindowClass;

void UnregisterWindowClass() noexcept { g_WindowClass.Get().Unregister(); }

}  // namespace

bool GLContext::InitializeFails(const char* aStep) const noexcept {
  LogError("Initialize failed: %s", aStep);
  return false;
}

HRESULT GLContext::Initialize(ULONG_PTR aParentWnd) noexcept {
  const LogContext log(m_uNumber);
  if (IsDrawThread()) return InitializeFails("it is called on the context's own draw thread"), E_GL_BADSTATE;
  if (IsInherited()) return InitializeFails("the context was created before a fork"), E_GL_BADSTATE;
  if (!IsUsable()) return InitializeFails("not enough memory for the parts of the context"), E_GL_BADSTATE;
  const DrawThreadWait wait(*this);
  if (!wait.IsAllowed()) return E_GL_BADSTATE;
  const std::scoped_lock replace(m_ReplaceLock);
  ChooseDisplay();
  m_Window.m_hParentWnd = reinterpret_cast<HWND>(aParentWnd);
  if (m_Window.m_Target.m_hRC != nullptr)
    RaiseListGeneration(
        "a context replaces its window");  // old keys must not name lists of the new rendering context
  if (!CreateGLWindow()) return E_FAIL;
  InstallMessageHook();
  return S_OK;
}

HRESULT GLContext::GetWindow(ULONG_PTR* aHandle) noexcept {
  return Output(aHandle, reinterpret_cast<ULONG_PTR>(Window()));
}

bool GLContext::CreateGLWindow() noexcept {
  StopDrawThread();
  const RECT place = DestroyGLWindow();
  if (!g_WindowClass.Get().Register()) return InitializeFails("the window class could not be registered");
  const ParentPlacement placement(m_Window.m_hParentWnd);
  const HWND window = CreateWindowExA(
      0, kWindowClass, kWindowClass, m_Window.m_hParentWnd != nullptr ? kChildStyle : kPopupStyle, place.left,
      place.top, place.right - place.left, place.bottom - place.top, m_Window.m_hParentWnd, nullptr,
      ModuleInstance(), nullptr);
  if (window == nullptr) return InitializeFails("no window could be created");
  if (StartDrawing(window) && WaitForRenderingContext()) return true;
  StopDrawThread();
  DestroyGLWindow();
  return false;
}

// Sets the window's pixel format and starts the draw thread. Returns false if either fails.
bool GLContext::StartDrawing(HWND aWindow) noexcept {
  const PLock lock(m_Lock);
  m_Window.m_hWnd = aWindow;
  m_Window.m_Target.m_hDC = GetDC(aWindow);
  m_Window.m_szObstacle = "the draw thread has not begun to draw";
  bool formatSet = false;
  SetupPixelFormat(&formatSet);
  SetWindowLongPtrA(aWindow, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  if (!formatSet) return InitializeFails("no pixel format could be set");
  try {
    auto thread = std::make_shared<PThread>(DrawThreadCallback, this, DrawThreadEnd);
    thread->HoldParks();
    const std::scoped_lock hold(m_DrawThreadLock);
    m_pDrawThread = thread;
    if (thread->Start(kPreferredCycle, kMustSleepCycle, kHighestPriority)) return true;
  } catch (...) {
    // same as a thread that does not start
  }
  return InitializeFails("no draw thread could be started");
}

bool GLContext::WaitForRenderingContext() noexcept {
  const auto end = std::chrono::steady_clock::now() + g_LongestStart;
  while (m_Window.m_Target.m_hRC == nullptr) {
    if (std::chrono::steady_clock::now() >= end || ExitGate::IsClosed()) {
      return InitializeFails(m_Window.m_szObstacle);
    }
    std::this_thread::sleep_for(kPollStep);
  }
  return true;
}

// Destroys rendering context and window, after the draw thread's end. Returns the window's rectangle relative
// to m_hParentWnd, the parent of the next window.
RECT GLContext::DestroyGLWindow() noexcept {
  RECT place{};
  // A window that outlives this object must not refer to it. This call waits for a running window procedure,
  // so it is made without locks.
  if (m_Window.m_hWnd != nullptr) SetWindowLongPtrA(m_Window.m_hWnd, GWLP_USERDATA, 0);
  const RenderingTurn turn;
  const PLock lock(m_Lock);
  if (const HGLRC context = m_Window.m_Target.m_hRC.exchange(nullptr)) wglDeleteContext(context);
  if (m_Window.m_hWnd == nullptr) return place;
  if (GetWindowRect(m_Window.m_hWnd, &place) == FALSE) place = RECT{};
  if (m_Window.m_hParentWnd != nullptr) {
    POINT corners[2] = {{place.left, place.top}, {place.right, place.bottom}};
    for (POINT& corner : corners) ScreenToClient(m_Window.m_hParentWnd, &corner);
    place = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
  }
  if (m_Window.m_Target.m_hDC != nullptr) ReleaseDC(m_Window.m_hWnd, m_Window.m_Target.m_hDC);
  m_Window.m_Target.m_hDC = nullptr;
  EndWindow(m_Window.m_hWnd);
  m_Window.m_hWnd = nullptr;
  if (m_Window.m_hPalette != nullptr) DeleteObject(m_Window.m_hPalette);
  m_Window.m_hPalette = nullptr;
  return place;
}

// Runs in the first cycle of the draw thread, and in later cycles until it succeeds.
bool GLContext::CreateRenderingContext() noexcept {
  if (m_Window.m_Target.m_hDC == nullptr) return false;
  const RenderingTurn turn;
  const PLock lock(m_Lock);
  const HGLRC context = wglCreateContext(m_Window.m_Target.m_hDC);
  if (context == nullptr) {
    m_Window.m_szObstacle = "the driver created no rendering context within 10 s";
    return false;
  }
  if (!wglMakeCurrent(m_Window.m_Target.m_hDC, context)) {
    m_Window.m_szObstacle = "the rendering context could not be made current within 10 s";
    wglDeleteContext(context);
    return false;
  }
  for (const GLenum hint :
       {GL_LINE_SMOOTH_HINT, GL_PERSPECTIVE_CORRECTION_HINT, GL_POINT_SMOOTH_HINT, GL_POLYGON_SMOOTH_HINT}) {
    glHint(hint, GL_FASTEST);
  }
  ReadLimits();
  glEnable(GL_NORMALIZE);
  m_Window.m_Target.Restart();
  m_ClipPlanes.TakeReset();  // no plane is enabled in a new rendering context
  m_Window.m_Target.m_hRC = context;
  return true;
}

void GLContext::ReadLimits() noexcept {
  if (IsLogged(LogLevel::kInfo)) {
    const auto text = [](GLenum aName) { return reinterpret_cast<const char*>(glGetString(aName)); };
    LogInfo("GL: %s, %s, version %s", text(GL_VENDOR), text(GL_RENDERER), text(GL_VERSION));
  }
  GLfloat values[2] = {};
  glGetFloatv(GL_POINT_SIZE_RANGE, values);
  g_afPointSizeRange[0] = values[0];
  g_afPointSizeRange[1] = values[1];
  glGetFloatv(GL_POINT_SIZE_GRANULARITY, values);
  g_fPointSizeGranularity = values[0];
  glGetFloatv(GL_LINE_WIDTH_RANGE, values);
  g_afLineWidthRange[0] = values[0];
  g_afLineWidthRange[1] = values[1];
  glGetFloatv(GL_LINE_WIDTH_GRANULARITY, values);
  g_fLineWidthGranularity = values[0];
  GLint planes = 0;
  glGetIntegerv(GL_MAX_CLIP_PLANES, &planes);
  if (planes > 0) g_iMaxClipPlanes = planes;
  GLint viewport[2] = {};
  glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
  g_aiMaxViewport[0] = viewport[0];
  g_aiMaxViewport[1] = viewport[1];
}

void GLContext::DestroyRenderingContext() noexcept {
  const RenderingTurn turn;
  const HGLRC context = m_Window.m_Target.m_hRC;
  wglMakeCurrent(m_Window.m_Target.m_hDC, context);
  wglDeleteContext(context);
  m_Window.m_Target.m_hRC = nullptr;
}

LRESULT GLContext::WindowProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept {
  const LogContext log(m_uNumber);
  switch (uMsg) {
    case WM_DESTROY:
      LogWarning(
          "the window is destroyed, because its parent or the connection to its server is lost: nothing is "
          "drawn");
      SuspendDrawThread();
      return DefWindowProcA(hWnd, uMsg, wParam, lParam);
    case WM_PAINT:
      TriggerDrawThread();
      return DefWindowProcA(hWnd, uMsg, wParam, lParam);
    case WM_ERASEBKGND:
      return 1;
    case WM_SYSCOLORCHANGE:
      OnSysColorChange();
      return 0;
    case WM_QUERYNEWPALETTE:
      return OnQueryNewPalette();
    case WM_PALETTECHANGED:
      OnPaletteChanged(wParam);
      return 0;
    default:
      return DefWindowProcA(hWnd, uMsg, wParam, lParam);
  }
}

// If a replacement is in progress, it waits for this procedure and does the same work, so this returns.
void GLContext::OnSysColorChange() noexcept {
  const std::unique_lock replace(m_ReplaceLock, std::try_to_lock);
  if (!replace) return;
  if (m_Window.m_Target.m_hRC == nullptr || m_bReleased.test()) return;
  {
    const PLock lock(m_Lock);
    RaiseListGeneration("a change of the system's colours");  // the rendering context's lists are destroyed
  }
  CreateGLWindow();
}

LRESULT GLContext::OnQueryNewPalette() noexcept {
  const PLock lock(m_Lock);
  if (!NeedsPalette()) return 0;
  SelectPalette(m_Window.m_Target.m_hDC, static_cast<HPALETTE>(m_Window.m_hPalette), TRUE);
  RealizePalette(m_Window.m_Target.m_hDC);
  return 1;
}

void GLContext::OnPaletteChanged(WPARAM wParam) noexcept {
  const PLock lock(m_Lock);
  if (reinterpret_cast<HWND>(wParam) == m_Window.m_hWnd || !NeedsPalette()) return;
  SelectPalette(m_Window.m_Target.m_hDC, static_cast<HPALETTE>(m_Window.m_hPalette), FALSE);
  RealizePalette(m_Window.m_Target.m_hDC);
  UpdateColors(m_Window.m_Target.m_hDC);
}

bool GLContext::NeedsPalette() const noexcept {
  return m_Window.m_Target.m_hRC != nullptr && (m_Window.m_PixelFormat.dwFlags & PFD_NEED_PALETTE) != 0 &&
         m_Window.m_hPalette != nullptr;
}
