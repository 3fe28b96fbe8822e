// GLBitmap: a one-bit image with one colour, for markers that keep their size on screen. No lock: the host
// must not use a bitmap while it changes it. Only Draw calls GL.

#pragma once

#include <gllib/IGLBitmap.h>

#include "component/GLObject.h"
#include "platform/Memory.h"

class GLBitmap final : public GLObject<GLBitmap, IGLBitmap> {
 public:
  HRESULT Initialize(int aWidth, int aHeight, LONG aOpaque) noexcept override;
  HRESULT SetPixels(int aSize, std::uint8_t* aArray) noexcept override;
  HRESULT GetPixel(int aX, int aY, LONG* aOpaque) noexcept override;
  HRESULT SetPixel(int aX, int aY, LONG aOpaque) noexcept override;
  HRESULT GetColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT SetColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT GetWidth(int* aValue) noexcept override;
  HRESULT GetHeight(int* aValue) noexcept override;
  HRESULT Draw(IGLContext* aContext, GLDATA_POINT* aOrigin, int aOffsetX, int aOffsetY) noexcept override;

 private:
  HRESULT TestPlace(int aX, int aY) const noexcept;
  int Stride() const noexcept;
  unsigned char* RowAt(int aY) const noexcept;

  int m_iWidth = 0;  ///< 0, or a multiple of 8
  int m_iHeight = 0;
  GLDATA_RGBA m_sColor = {1.0f, 1.0f, 1.0f, 1.0f};
  int m_iBitsSize = 0;
  /// Rows from the bottom up, padded to 32-bit words. The first pixel is the highest bit of a byte.
  HeapBlock<unsigned char[]> m_pBits;
};
