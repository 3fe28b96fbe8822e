// The twin's rendering context, by EGL on no window system.

#include "support/PlainGL.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
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
    const EGLConfig config = FindConfig();
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
  /// The first one of 8 bits a colour and no alpha, with as many bits of depth as there are up to 32. It is
  /// looked for one by one, as EGL's own choice prefers colours of 10 bits.
  EGLConfig FindConfig() const {
    EGLConfig configs[512];
    EGLint count = 0;
    eglGetConfigs(m_Display, configs, static_cast<EGLint>(std::size(configs)), &count);
    for (const EGLint depth : {32, 24}) {
      const auto fits = [&](EGLConfig config) {
        const auto has = [&](EGLint name) {
          EGLint value = 0;
          eglGetConfigAttrib(m_Display, config, name, &value);
          return value;
        };
        return has(EGL_RED_SIZE) == 8 && has(EGL_GREEN_SIZE) == 8 && has(EGL_BLUE_SIZE) == 8 &&
               has(EGL_ALPHA_SIZE) == 0 && has(EGL_DEPTH_SIZE) == depth && has(EGL_SAMPLES) == 0 &&
               (has(EGL_SURFACE_TYPE) & EGL_PBUFFER_BIT) != 0 &&
               (has(EGL_RENDERABLE_TYPE) & EGL_OPENGL_BIT) != 0;
      };
      const auto found = std::find_if(configs, configs + count, fits);
      if (found != configs + count) return *found;
    }
    return nullptr;
  }

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
