// PlainContext: a rendering context without a window, current on the thread of a benchmark. Used on one
// thread only.

#pragma once

#include <stdexcept>

#include "component/ContextSite.h"
#include "platform/GL.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

/// An OpenGL context on a pbuffer of the surfaceless display.
class PlainContext {
 public:
  explicit PlainContext(int aWidth = 512, int aHeight = 512) {
    m_Display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             24,
                             EGL_NONE};
    const EGLint size[] = {EGL_WIDTH, aWidth, EGL_HEIGHT, aHeight, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    const bool made =
        eglInitialize(m_Display, nullptr, nullptr) && eglBindAPI(EGL_OPENGL_API) &&
        eglChooseConfig(m_Display, wanted, &config, 1, &count) && count == 1 &&
        (m_Surface = eglCreatePbufferSurface(m_Display, config, size)) != EGL_NO_SURFACE &&
        (m_Context = eglCreateContext(m_Display, config, EGL_NO_CONTEXT, nullptr)) != EGL_NO_CONTEXT &&
        eglMakeCurrent(m_Display, m_Surface, m_Surface, m_Context);
    if (!made) throw std::runtime_error("no OpenGL context without a window");
    glViewport(0, 0, aWidth, aHeight);
  }
  ~PlainContext() {
    eglMakeCurrent(m_Display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(m_Display, m_Context);
    eglDestroySurface(m_Display, m_Surface);
  }
  /// Makes the context current again.
  void MakeCurrent() const { eglMakeCurrent(m_Display, m_Surface, m_Surface, m_Context); }
  PlainContext(const PlainContext&) = delete;
  PlainContext& operator=(const PlainContext&) = delete;

 private:
  EGLDisplay m_Display = EGL_NO_DISPLAY;
  EGLSurface m_Surface = EGL_NO_SURFACE;
  EGLContext m_Context = EGL_NO_CONTEXT;
};
