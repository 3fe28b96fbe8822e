// OffscreenSurface: a single-buffered picture of any size in memory, and a rendering context of its own on
// it. Made, drawn on and ended on the draw thread.

#pragma once

#include "platform/DeviceContext.h"
#include "platform/RenderingContext.h"

class OffscreenSurface {
 public:
  /// Makes the surface; IsReady tells whether the platform can.
  OffscreenSurface(LONG aWidth, LONG aHeight, BYTE aColorBits, BYTE aDepthBits) noexcept;
  ~OffscreenSurface();
  OffscreenSurface(const OffscreenSurface&) = delete;
  OffscreenSurface& operator=(const OffscreenSurface&) = delete;

  bool IsReady() const noexcept { return m_hRC != nullptr; }
  int Width() const noexcept { return m_iWidth; }
  int Height() const noexcept { return m_iHeight; }
  /// Lets go of what is current first: the driver of a window, where it isn't that of memory, must learn of
  /// it.
  void MakeCurrent() const noexcept;
  /// Leaves nothing current on this thread.
  void LetGo() const noexcept { wglMakeCurrent(m_hDC, nullptr); }

 private:
  bool SetFormat(BYTE aColorBits, BYTE aDepthBits) noexcept;

  LONG m_iWidth, m_iHeight;
  HDC m_hDC;
  HBITMAP m_hBitmap = nullptr;
  HGLRC m_hRC = nullptr;
};
