// The twin's rendering context, by EGL on no window system.

#include "support/PlainGL.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <gtest/gtest.h>

#include <thread>

#include "platform/GL.h"

namespace {

/// A rendering context with an off-screen surface, current on the thread that makes it for as long as it
/// stands.
class PlainContext {
 public:
  PlainContext(int aWidth, int aHeight) {
    // The driver shares one display per process: it is left initialised for the others.
    m_Display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    eglInitialize(m_Display, nullptr, nullptr);
    eglBindAPI(EGL_OPENGL_API);
    const EGLint configNeeds[] = {EGL_SURFACE_TYPE,
                                  EGL_PBUFFER_BIT,
                                  EGL_RENDERABLE_TYPE,
                                  EGL_OPENGL_BIT,
                                  EGL_RED_SIZE,
                                  8,
                                  EGL_GREEN_SIZE,
                                  8,
                                  EGL_BLUE_SIZE,
                                  8,
                                  EGL_DEPTH_SIZE,
                                  24,
                                  EGL_SAMPLES,
                                  0,
                                  EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    eglChooseConfig(m_Display, configNeeds, &config, 1, &count);
    const EGLint size[] = {EGL_WIDTH, aWidth, EGL_HEIGHT, aHeight, EGL_NONE};
    m_Surface = eglCreatePbufferSurface(m_Display, config, size);
    m_Context = eglCreateContext(m_Display, config, EGL_NO_CONTEXT, nullptr);
    m_bCurrent = eglMakeCurrent(m_Display, m_Surface, m_Surface, m_Context) == EGL_TRUE;
  }
  ~PlainContext() {
    eglMakeCurrent(m_Display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(m_Display, m_Context);
    eglDestroySurface(m_Display, m_Surface);
    eglReleaseThread();
  }
  PlainContext(const PlainContext&) = delete;
  PlainContext& operator=(const PlainContext&) = delete;

  bool IsCurrent() const { return m_bCurrent; }

 private:
  EGLDisplay m_Display = EGL_NO_DISPLAY;
  EGLSurface m_Surface = EGL_NO_SURFACE;
  EGLContext m_Context = EGL_NO_CONTEXT;
  bool m_bCurrent = false;
};

}  // namespace

Picture DrawPlainGL(int aWidth, int aHeight, const std::function<void()>& aDraw) {
  Picture picture;
  std::thread([&] {
    const PlainContext context(aWidth, aHeight);
    ASSERT_TRUE(context.IsCurrent()) << "EGL gives no off-screen context: error " << eglGetError();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    aDraw();
    glFinish();
    picture = Picture::Read(aWidth, aHeight);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR}) << "left by the plain drawing";
  }).join();
  return picture;
}
