// The twin's rendering context: a window of its own, of the format that GDI chooses for 32 bits of colour and
// depth.

#include "support/PlainGL.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <thread>

#include "platform/GL.h"
#include "support/TestDisplay.h"

namespace {

/// A rendering context on a window, current on the thread that makes it for as long as it stands.
class PlainContext {
 public:
  PlainContext(int aWidth, int aHeight) {
    WNDCLASSA windowClass{};
    windowClass.style = CS_OWNDC;
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.lpszClassName = "PlainGL";
    RegisterClassA(&windowClass);  // refused from the second time on
    m_hWnd = CreateWindowExA(0, "PlainGL", "", WS_POPUP | WS_VISIBLE, 0, 0, aWidth, aHeight, nullptr, nullptr,
                             nullptr, nullptr);
    m_hDC = GetDC(m_hWnd);
    PIXELFORMATDESCRIPTOR request{};
    request.nSize = sizeof(request);
    request.nVersion = 1;
    request.dwFlags = PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
    request.cColorBits = 32;
    request.cDepthBits = 32;
    SetPixelFormat(m_hDC, ChoosePixelFormat(m_hDC, &request), &request);
    m_hRC = wglCreateContext(m_hDC);
    m_bCurrent = wglMakeCurrent(m_hDC, m_hRC) != FALSE;
  }
  ~PlainContext() {
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(m_hRC);
    ReleaseDC(m_hWnd, m_hDC);
    DestroyWindow(m_hWnd);
    PumpMessages();
  }
  PlainContext(const PlainContext&) = delete;
  PlainContext& operator=(const PlainContext&) = delete;

  bool IsCurrent() const { return m_bCurrent; }

 private:
  HWND m_hWnd = nullptr;
  HDC m_hDC = nullptr;
  HGLRC m_hRC = nullptr;
  bool m_bCurrent = false;
};

}  // namespace

Picture DrawPlainGL(int aWidth, int aHeight, const std::function<void()>& aDraw) {
  Picture picture;
  std::thread([&] {
    const PlainContext context(aWidth, aHeight);
    ASSERT_TRUE(context.IsCurrent()) << "no rendering context: error " << GetLastError();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    aDraw();
    glFinish();
    picture = Picture::Read(aWidth, aHeight);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR}) << "left by the plain drawing";
  }).join();
  return picture;
}
