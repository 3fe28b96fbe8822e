// EglDriver: formats, surfaces and contexts of an EGL display, for the X11 and the headless display. Any
// thread: its functions call eglBindAPI, whose setting is per thread. The driver is not called while the
// process exits. The last user terminates the EGL display, and with it the driver's threads. A display that
// was initialised before the component used it is not terminated.

#pragma once

#include <EGL/egl.h>

#include <memory>
#include <vector>

#include "platform/linux/display/DisplayServer.h"

class EglDriver {
 public:
  EglDriver() noexcept = default;
  EglDriver(const EglDriver&) = delete;
  EglDriver& operator=(const EglDriver&) = delete;
  ~EglDriver() { End(); }

  /// Starts the driver, on a separate thread, so that the caller's client API does not change.
  /// @param aVisual native visual that window formats must have; 0 draws windows into pbuffers
  /// @return false if the display cannot be used
  bool Start(EGLDisplay aDisplay, EGLint aVisual) noexcept;

  /// Releases the display. All its surfaces and contexts must be destroyed before.
  void End() noexcept;
  /// Returns whether the display still works. A host that also uses it may have terminated it.
  bool IsUsable() const noexcept;

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

/// A drawable of EGL.
class EglSurface : public DrawSurface {
 public:
  EglSurface(EGLDisplay aDisplay, EGLSurface aSurface) noexcept : m_Display(aDisplay), m_Surface(aSurface) {}
  ~EglSurface() override;
  EglSurface(const EglSurface&) = delete;
  EglSurface& operator=(const EglSurface&) = delete;

  EGLSurface Handle() const noexcept { return m_Surface; }

 private:
  EGLDisplay m_Display;
  EGLSurface m_Surface;
};
