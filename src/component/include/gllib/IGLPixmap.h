// A true-colour image.

#pragma once

#include <gllib/GLTypes.h>

struct IGLContext;

/// Pixmap.
struct IGLPixmap : IUnknown {
  static constexpr IID Identifier = {
      0x4EE20F33, 0x2F46, 0x43B4, {0x83, 0x44, 0x4C, 0x25, 0x22, 0xAD, 0x59, 0x01}};

  virtual HRESULT Initialize(int aWidth, int aHeight, GLDATA_RGBA4B aRGBA) noexcept = 0;
  virtual HRESULT LoadImageFile(BSTR aFilename) noexcept = 0;
  virtual HRESULT SetPixels(int aSize, GLDATA_RGBA4B* aArray) noexcept = 0;
  virtual HRESULT AccessPixmapData(int* aSize, GLDATA_RGBA4B** aArray) noexcept = 0;
  virtual HRESULT GetWidth(int* aValue) noexcept = 0;
  virtual HRESULT GetHeight(int* aValue) noexcept = 0;
  virtual HRESULT GetPixel(int aX, int aY, GLDATA_RGBA4B* aRGBA) noexcept = 0;
  virtual HRESULT SetPixel(int aX, int aY, GLDATA_RGBA4B aRGBA) noexcept = 0;
  virtual HRESULT ScaleColor(GLDATA_RGBA* aScale) noexcept = 0;
  virtual HRESULT ScaleColor256(int aSize, float* aArray) noexcept = 0;
  virtual HRESULT MakeNegative(LONG aInvertAlpha) noexcept = 0;
  virtual HRESULT MakeMonochrome(GLDATA_RGBA4B aRGBA) noexcept = 0;
  virtual HRESULT GetZoom(float* aFactorX, float* aFactorY) noexcept = 0;
  virtual HRESULT SetZoom(float aFactorX, float aFactorY) noexcept = 0;
  virtual HRESULT GetClip(int* aX, int* aY, int* aWidth, int* aHeight) noexcept = 0;
  virtual HRESULT SetClip(int aX, int aY, int aWidth, int aHeight) noexcept = 0;
  virtual HRESULT Draw(IGLContext* aContext, GLDATA_POINT* aOrigin) noexcept = 0;

 protected:
  ~IGLPixmap() = default;
};
