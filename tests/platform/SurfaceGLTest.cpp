// Windows and rendering contexts on the headless display, and a host's own context beside them.

#include "platform/DeviceContext.h"
#include "platform/GL.h"
#include "platform/PixelFormat.h"
#include "platform/RenderingContext.h"
#include "platform/Window.h"
#include "platform/linux/display/headless/HeadlessDisplay.h"
#include "support/Test.h"

namespace {

PIXELFORMATDESCRIPTOR Request() {
  PIXELFORMATDESCRIPTOR request{};
  request.nSize = sizeof(request);
  request.nVersion = 1;
  request.dwFlags = PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
  request.cColorBits = 24;
  request.cDepthBits = 24;
  return request;
}

/// Gives a device context a format and a rendering context, current on the calling thread.
HGLRC Start(HDC aDC) {
  const PIXELFORMATDESCRIPTOR request = Request();
  EXPECT_TRUE(SetPixelFormat(aDC, ChoosePixelFormat(aDC, &request), &request));
  const HGLRC context = wglCreateContext(aDC);
  EXPECT_TRUE(wglMakeCurrent(aDC, context));
  return context;
}

std::uint32_t PixelAt(int x, int y) {
  GLubyte p[4] = {};
  glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, p);
  return std::uint32_t{p[0]} << 16 | std::uint32_t{p[1]} << 8 | p[2];
}

}  // namespace

class HeadlessWindow : public testing::Test {
 protected:
  HeadlessWindow() {
    WNDCLASSA windowClass{};
    windowClass.lpszClassName = "SurfaceTest";
    windowClass.lpfnWndProc = DefWindowProcA;
    RegisterClassA(&windowClass);
    m_hWnd = CreateWindowExA(0, "SurfaceTest", "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    m_hDC = GetDC(m_hWnd);
  }
  ~HeadlessWindow() override {
    wglMakeCurrent(nullptr, nullptr);
    ReleaseDC(m_hWnd, m_hDC);
    DestroyWindow(m_hWnd);
    UnregisterClassA("SurfaceTest", nullptr);
  }
  HWND m_hWnd;
  HDC m_hDC;
};

TEST_F(HeadlessWindow, GrowsAtTheNextMakeCurrent) {
  const HGLRC context = Start(m_hDC);
  EXPECT_EQ(wglGetCurrentContext(), context);
  std::thread([&] { SetWindowPos(m_hWnd, nullptr, 2147483647, 5, 150, 100, 0); }).join();
  EXPECT_EQ(wglGetCurrentContext(), nullptr) << "the drawable is too small by now";
  ASSERT_TRUE(wglMakeCurrent(m_hDC, context));
  glViewport(0, 0, 150, 100);
  glClearColor(0, 1, 0, 1);
  glClear(GL_COLOR_BUFFER_BIT);
  ASSERT_TRUE(SwapBuffers(m_hDC));
  for (const GLenum buffer : {GL_BACK, GL_FRONT}) {
    glReadBuffer(buffer);
    EXPECT_EQ(PixelAt(149, 99), 0x00FF00u);
  }
  RECT rect{};
  GetWindowRect(m_hWnd, &rect);
  EXPECT_EQ(rect.right - rect.left, 150);
  wglDeleteContext(context);
}

TEST(HostThread, KeepsItsClientApiAndItsContext) {
  ASSERT_TRUE(eglBindAPI(EGL_OPENGL_ES_API));
  const auto display = HeadlessDisplay::Open();
  ASSERT_NE(display, nullptr);
  EXPECT_EQ(eglQueryAPI(), EGLenum{EGL_OPENGL_ES_API});
  const HDC dc = CreateCompatibleDC(nullptr);
  EXPECT_TRUE(wglMakeCurrent(nullptr, nullptr));
  EXPECT_EQ(eglQueryAPI(), EGLenum{EGL_OPENGL_ES_API});
  DeleteDC(dc);
}
