// A one-bit image with one colour.

#pragma once

#include <gllib/GLTypes.h>

struct IGLContext;

/// Bitmap.
struct IGLBitmap : IUnknown {
  static constexpr IID Identifier = {
      0x8885BE1C, 0xF7D8, 0x4D87, {0x95, 0x64, 0x42, 0x01, 0x82, 0x4F, 0x20, 0xD3}};

  virtual HRESULT Initialize(int aWidth, int aHeight, LONG aOpaque) noexcept = 0;
  virtual HRESULT SetPixels(int aSize, unsigned char* aArray) noexcept = 0;
  virtual HRESULT GetPixel(int aX, int aY, LONG* aOpaque) noexcept = 0;
  virtual HRESULT SetPixel(int aX, int aY, LONG aOpaque) noexcept = 0;
  virtual HRESULT GetColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT SetColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT GetWidth(int* aValue) noexcept = 0;
  virtual HRESULT GetHeight(int* aValue) noexcept = 0;
  virtual HRESULT Draw(IGLContext* aContext, GLDATA_POINT* aOrigin, int aOffsetX, int aOffsetY) noexcept = 0;

 protected:
  ~IGLBitmap() = default;
};
