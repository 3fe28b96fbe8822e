// OffscreenSurface: a memory device context with a bitmap section and a rendering context. Draw thread.

#include "context/capture/OffscreenSurface.h"

#include "platform/PixelFormat.h"

OffscreenSurface::OffscreenSurface(LONG aWidth, LONG aHeight, BYTE aColorBits, BYTE aDepthBits) noexcept
    : m_iWidth(aWidth), m_iHeight(aHeight) {
  const HDC dc = CreateCompatibleDC(nullptr);
  m_Target.m_hDC = dc;
  if (dc == nullptr) return;
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info);
  info.bmiHeader.biWidth = aWidth;
  info.bmiHeader.biHeight = aHeight;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = aColorBits;
  void* bits = nullptr;
  m_hBitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (m_hBitmap == nullptr || bits == nullptr) return;
  SelectObject(dc, m_hBitmap);
  if (SetFormat(aColorBits, aDepthBits)) m_Target.m_hRC = wglCreateContext(dc);
}

OffscreenSurface::~OffscreenSurface() {
  if (m_Target.m_hRC != nullptr) wglDeleteContext(m_Target.m_hRC);
  if (m_hBitmap != nullptr) DeleteObject(m_hBitmap);
  if (m_Target.m_hDC != nullptr) DeleteDC(m_Target.m_hDC);
}

bool OffscreenSurface::SetFormat(BYTE aColorBits, BYTE aDepthBits) noexcept {
  PIXELFORMATDESCRIPTOR request{};
  request.nSize = sizeof(request);
  request.nVersion = 1;
  request.dwFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL;
  request.iPixelType = PFD_TYPE_RGBA;
  request.cColorBits = aColorBits;
  request.cDepthBits = aDepthBits;
  const int format = ChoosePixelFormat(m_Target.m_hDC, &request);
  return format != 0 && SetPixelFormat(m_Target.m_hDC, format, &request) != FALSE;
}
