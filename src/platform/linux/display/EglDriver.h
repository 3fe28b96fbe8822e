// EglDriver: formats, surfaces and contexts of an EGL display, which the X11 and the headless display share.
// EGL may be called from any thread; eglBindAPI is said anew on each. The EGL display is never terminated:
// the driver keeps threads and caches for the next one.

#pragma once

#include <EGL/egl.h>

#include <memory>
#include <vector>

#include "platform/linux/display/DisplayServer.h"

class EglDriver {
 public:
  /// Works on a thread of its own, so that the caller's choice of client API stays.
  /// @param aVisual the native visual that window formats must have; 0 makes windows of pbuffers
  /// @return false when the display can't be used
  bool Start(EGLDisplay aDisplay, EGLint aVisual) noexcept;

  EGLDisplay Handle() const noexcept { return m_Display; }
  const std::vector<DisplayFormat>& Formats(SurfaceKind aKind) const noexcept {
    return aKind == SurfaceKind::kWindow ? m_vWindowFormats : m_vMemoryFormats;
  }
  int LargestSurface() const noexcept { return m_iLargest; }

  std::unique_ptr<DrawSurface> MakePbuffer(int aWidth, int aHeight, const DisplayFormat& aFormat) noexcept;
  std::unique_ptr<DrawContext> MakeContext(const DisplayFormat& aFormat) noexcept;
  bool MakeCurrent(EGLSurface aSurface, DrawContext* aContext) noexcept;

 private:
  bool StartHere(EGLint aVisual) noexcept;
  std::vector<DisplayFormat> ReadFormats(EGLint aSurfaceBit, EGLint aVisual, DWORD aFlags);
  DisplayFormat Describe(EGLConfig aConfig, DWORD aFlags) const noexcept;
  EGLint Attribute(EGLConfig aConfig, EGLint aName) const noexcept;
  int ReadLargest() noexcept;

  EGLDisplay m_Display = EGL_NO_DISPLAY;
  std::vector<DisplayFormat> m_vWindowFormats, m_vMemoryFormats;
  int m_iLargest = 0;
};

/// A drawable that EGL knows.
class EglSurface : public DrawSurface {
 public:
  EglSurface(EGLDisplay aDisplay, EGLSurface aSurface) noexcept : m_Display(aDisplay), m_Surface(aSurface) {}
  ~EglSurface() override { eglDestroySurface(m_Display, m_Surface); }
  EglSurface(const EglSurface&) = delete;
  EglSurface& operator=(const EglSurface&) = delete;

  EGLSurface Handle() const noexcept { return m_Surface; }

 private:
  EGLDisplay m_Display;
  EGLSurface m_Surface;
};
