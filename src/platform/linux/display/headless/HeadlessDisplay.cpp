// HeadlessDisplay: windows are records, drawn into pbuffers. Any thread.

#include "platform/linux/display/headless/HeadlessDisplay.h"

#include <EGL/eglext.h>

#include <algorithm>
#include <new>

#include "platform/Log.h"

namespace {

HWND const kDesktop = reinterpret_cast<HWND>(std::uintptr_t{1});
constexpr int kDesktopWidth = 1920, kDesktopHeight = 1080;

int WidthOf(const RECT& aRect) noexcept { return std::max(aRect.right - aRect.left, 1); }
int HeightOf(const RECT& aRect) noexcept { return std::max(aRect.bottom - aRect.top, 1); }

/// A window's pbuffer, with the window's size at its creation.
class WindowPbuffer final : public DrawSurface {
 public:
  WindowPbuffer(HeadlessDisplay& aDisplay, HWND aWindow, const RECT& aRect,
                std::unique_ptr<DrawSurface> aPbuffer)
      : m_Display(aDisplay), m_hWnd(aWindow), m_sRect(aRect), m_pPbuffer(std::move(aPbuffer)) {}

  bool IsOutgrown() const noexcept override {
    RECT now{};
    return m_Display.ScreenRectangle(m_hWnd, &now) &&
           (WidthOf(now) != WidthOf(m_sRect) || HeightOf(now) != HeightOf(m_sRect));
  }
  EGLSurface Handle() const noexcept { return static_cast<EglSurface&>(*m_pPbuffer).Handle(); }

 private:
  HeadlessDisplay& m_Display;
  HWND m_hWnd;
  RECT m_sRect;
  std::unique_ptr<DrawSurface> m_pPbuffer;
};

EGLDisplay FirstDevice(PFNEGLGETPLATFORMDISPLAYEXTPROC aGetDisplay) noexcept {
  const auto query = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
  EGLDeviceEXT device = nullptr;
  EGLint count = 0;
  if (query == nullptr || query(1, &device, &count) == EGL_FALSE || count < 1) return EGL_NO_DISPLAY;
  return aGetDisplay(EGL_PLATFORM_DEVICE_EXT, device, nullptr);
}

}  // namespace

std::shared_ptr<DisplayServer> HeadlessDisplay::Open() noexcept {
  try {
    auto display = std::make_shared<HeadlessDisplay>();
    return display->Start() ? display : nullptr;
  } catch (...) {
    return nullptr;
  }
}

bool HeadlessDisplay::Start() noexcept {
  const auto getDisplay =
      reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (getDisplay == nullptr) return false;
  if (m_Egl.Start(FirstDevice(getDisplay), 0)) return true;
  return m_Egl.Start(getDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr), 0);
}

HWND HeadlessDisplay::MakeWindow(HWND aParent, const RECT& aPlace) noexcept {
  if (aParent != nullptr) {
    LogError("a parent window is passed, but the display is headless and has no windows");
    return nullptr;
  }
  const std::scoped_lock lock(m_Lock);
  const HWND window = reinterpret_cast<HWND>(m_uNextWindow++);
  try {
    m_Windows[window] = aPlace;
  } catch (...) {
    return nullptr;
  }
  return window;
}

void HeadlessDisplay::EndWindow(HWND aWindow) noexcept {
  const std::scoped_lock lock(m_Lock);
  m_Windows.erase(aWindow);
}

bool HeadlessDisplay::Place(HWND aWindow, int x, int y, int aWidth, int aHeight) noexcept {
  const std::scoped_lock lock(m_Lock);
  const auto found = m_Windows.find(aWindow);
  if (found == m_Windows.end()) return false;
  constexpr int kFar = 0x3FFFFFFF;
  const int largest = m_Egl.LargestSurface();
  x = std::clamp(x, -kFar, kFar);
  y = std::clamp(y, -kFar, kFar);
  found->second = {x, y, x + std::clamp(aWidth, 0, largest), y + std::clamp(aHeight, 0, largest)};
  return true;
}

bool HeadlessDisplay::ScreenRectangle(HWND aWindow, RECT* aRect) noexcept {
  if (aWindow == kDesktop) {
    *aRect = {0, 0, kDesktopWidth, kDesktopHeight};
    return true;
  }
  const std::scoped_lock lock(m_Lock);
  const auto found = m_Windows.find(aWindow);
  if (found == m_Windows.end()) return false;
  *aRect = found->second;
  return true;
}

HWND HeadlessDisplay::ParentOf(HWND) noexcept { return nullptr; }

HWND HeadlessDisplay::Desktop() noexcept { return kDesktop; }

std::unique_ptr<DrawSurface> HeadlessDisplay::MakeWindowSurface(HWND aWindow,
                                                                const DisplayFormat& aFormat) noexcept {
  RECT rect{};
  if (!ScreenRectangle(aWindow, &rect)) return nullptr;
  auto pbuffer = m_Egl.MakePbuffer(WidthOf(rect), HeightOf(rect), aFormat);
  if (pbuffer == nullptr) return nullptr;
  return std::unique_ptr<DrawSurface>(new (std::nothrow)
                                          WindowPbuffer(*this, aWindow, rect, std::move(pbuffer)));
}

std::unique_ptr<DrawSurface> HeadlessDisplay::MakeMemorySurface(int aWidth, int aHeight,
                                                                const DisplayFormat& aFormat) noexcept {
  return m_Egl.MakePbuffer(aWidth, aHeight, aFormat);
}

std::unique_ptr<DrawContext> HeadlessDisplay::MakeContext(const DisplayFormat& aFormat) noexcept {
  return m_Egl.MakeContext(aFormat);
}

bool HeadlessDisplay::MakeCurrent(DrawSurface* aSurface, DrawContext* aContext) noexcept {
  EGLSurface handle = EGL_NO_SURFACE;
  if (const auto* window = dynamic_cast<WindowPbuffer*>(aSurface)) {
    handle = window->Handle();
  } else if (aSurface != nullptr) {
    handle = static_cast<EglSurface*>(aSurface)->Handle();
  }
  return m_Egl.MakeCurrent(handle, aContext);
}

// Pbuffers are single-buffered: a frame is complete when GL has finished it.
bool HeadlessDisplay::Swap(HWND aWindow, DrawSurface& aSurface) noexcept {
  RECT rect{};
  return ScreenRectangle(aWindow, &rect) &&
         eglSwapBuffers(m_Egl.Handle(), static_cast<WindowPbuffer&>(aSurface).Handle()) != EGL_FALSE;
}
