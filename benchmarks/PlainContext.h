// PlainContext: a rendering context without a window, unknown to the component, for benchmarks and for the
// pictures of tests. It is current on the thread that creates it, until its end.

#pragma once

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "platform/GL.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

/// An OpenGL context on a pbuffer of the surfaceless display.
class PlainContext {
 public:
  explicit PlainContext(int aWidth = 512, int aHeight = 512) {
    // All users of the surfaceless display in a process share it, so the destructor does not terminate it.
    m_Display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    const EGLint size[] = {EGL_WIDTH, aWidth, EGL_HEIGHT, aHeight, EGL_NONE};
    EGLConfig config = nullptr;
    const bool made =
        eglInitialize(m_Display, nullptr, nullptr) && eglBindAPI(EGL_OPENGL_API) &&
        (config = FindConfig()) != nullptr &&
        (m_Surface = eglCreatePbufferSurface(m_Display, config, size)) != EGL_NO_SURFACE &&
        (m_Context = eglCreateContext(m_Display, config, EGL_NO_CONTEXT, nullptr)) != EGL_NO_CONTEXT &&
        eglMakeCurrent(m_Display, m_Surface, m_Surface, m_Context);
    if (!made) throw std::runtime_error("cannot create an OpenGL context without a window");
    glViewport(0, 0, aWidth, aHeight);
  }
  ~PlainContext() {
    eglMakeCurrent(m_Display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(m_Display, m_Context);
    eglDestroySurface(m_Display, m_Surface);
    eglReleaseThread();
  }
  /// Makes the context current again.
  void MakeCurrent() const { eglMakeCurrent(m_Display, m_Surface, m_Surface, m_Context); }
  PlainContext(const PlainContext&) = delete;
  PlainContext& operator=(const PlainContext&) = delete;

 private:
  /// Returns the first format with 8 bits per colour, without alpha and multisampling, and with a depth of 32
  /// bits, else 24; null if there is none. eglChooseConfig would prefer colours of 10 bits.
  EGLConfig FindConfig() const {
    EGLConfig configs[512];
    EGLint count = 0;
    eglGetConfigs(m_Display, configs, static_cast<EGLint>(std::size(configs)), &count);
    for (const EGLint depth : {32, 24}) {
      const auto fits = [&](EGLConfig aConfig) {
        const auto has = [&](EGLint aName) {
          EGLint value = 0;
          eglGetConfigAttrib(m_Display, aConfig, aName, &value);
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
};
