// OffscreenSurface: a single-buffered picture of any size in memory, with a rendering context. Created, used
// and destroyed on the draw thread.

#pragma once

#include "context/frame/GLRenderTarget.h"
#include "platform/DeviceContext.h"

class OffscreenSurface {
 public:
  /// Creates the surface. IsReady returns whether that succeeded.
  OffscreenSurface(LONG aWidth, LONG aHeight, BYTE aColorBits, BYTE aDepthBits) noexcept;
  ~OffscreenSurface();
  OffscreenSurface(const OffscreenSurface&) = delete;
  OffscreenSurface& operator=(const OffscreenSurface&) = delete;

  bool IsReady() const noexcept { return m_Target.m_hRC != nullptr; }
  int Width() const noexcept { return m_iWidth; }
  int Height() const noexcept { return m_iHeight; }
  /// Returns the target for passes that draw on the surface.
  GLRenderTarget& Target() noexcept { return m_Target; }

 private:
  bool SetFormat(BYTE aColorBits, BYTE aDepthBits) noexcept;

  LONG m_iWidth, m_iHeight;
  HBITMAP m_hBitmap = nullptr;
  GLRenderTarget m_Target;
};
