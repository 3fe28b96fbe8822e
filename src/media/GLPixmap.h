// GLPixmap: a true-colour image in main memory, with a zoom and a clip rectangle. No lock: the host must not
// use an image while it changes it. Only Draw calls GL.

#pragma once

#include <gllib/IGLPixmap.h>

#include "component/GLObject.h"
#include "media/PixelBlock.h"

class GLPixmap final : public GLObject<GLPixmap, IGLPixmap> {
 public:
  HRESULT Initialize(int aWidth, int aHeight, GLDATA_RGBA4B aRGBA) noexcept override;
  HRESULT LoadImageFile(BSTR aFilename) noexcept override;
  HRESULT SetPixels(int aSize, GLDATA_RGBA4B* aArray) noexcept override;
  HRESULT AccessPixmapData(int* aSize, GLDATA_RGBA4B** aArray) noexcept override;
  HRESULT GetWidth(int* aValue) noexcept override;
  HRESULT GetHeight(int* aValue) noexcept override;
  HRESULT GetPixel(int aX, int aY, GLDATA_RGBA4B* aRGBA) noexcept override;
  HRESULT SetPixel(int aX, int aY, GLDATA_RGBA4B aRGBA) noexcept override;
  HRESULT ScaleColor(GLDATA_RGBA* aScale) noexcept override;
  HRESULT ScaleColor256(int aSize, float* aArray) noexcept override;
  HRESULT MakeNegative(LONG aInvertAlpha) noexcept override;
  HRESULT MakeMonochrome(GLDATA_RGBA4B aRGBA) noexcept override;
  HRESULT GetZoom(float* aFactorX, float* aFactorY) noexcept override;
  HRESULT SetZoom(float aFactorX, float aFactorY) noexcept override;
  HRESULT GetClip(int* aX, int* aY, int* aWidth, int* aHeight) noexcept override;
  HRESULT SetClip(int aX, int aY, int aWidth, int aHeight) noexcept override;
  HRESULT Draw(IGLContext* aContext, GLDATA_POINT* aOrigin) noexcept override;

 private:
  void TakePixels(PixelBlock aPixels, int aWidth, int aHeight) noexcept;
  HRESULT TestPlace(int aX, int aY) const noexcept;
  GLDATA_RGBA4B& PixelAt(int aX, int aY) noexcept;

  int m_iWidth = 0;
  int m_iHeight = 0;
  int m_iPixelCount = 0;
  PixelBlock m_pPixels;  ///< rows from the bottom up; null if the pixmap is empty
  float m_fZoomX = 1.0f;
  float m_fZoomY = 1.0f;
  int m_iClipX = 0;
  int m_iClipY = 0;  ///< from the top of the image
  int m_iClipWidth = 0;
  int m_iClipHeight = 0;
};
