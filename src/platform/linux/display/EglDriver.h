// EglDriver: formats, surfaces and contexts of an EGL display, which the X11 and the headless display share.
// EGL may be called from any thread; eglBindAPI is said anew on each. No function of the driver is called
// while the process exits. The EGL display is terminated with its last user, and the driver's threads with
// it, unless somebody else had initialised it before.

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

  /// Works on a thread of its own, so that the caller's choice of client API stays.
  /// @param aVisual the native visual that window formats must have; 0 makes windows of pbuffers
  /// @return false when the display can't be used
  bool Start(EGLDisplay aDisplay, EGLint aVisual) noexcept;

  /// Gives the display up, after all of its surfaces and contexts.
  void End() noexcept;
  /// Whether the display still works: the host may have terminated one that it uses too.
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

/// A drawable that EGL knows.
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
