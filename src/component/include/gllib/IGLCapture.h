// What a host implements to receive pictures of what a context draws.

#pragma once

#include <gllib/GLTypes.h>

struct IGLPixmap;

/// Asked after every frame. Called on the draw thread.
struct IGLCapture : IUnknown {
  static constexpr IID Identifier = {
      0xF8BF68B8, 0x3816, 0x4F53, {0xA9, 0xE7, 0x04, 0x9A, 0x6F, 0xEB, 0x42, 0x2E}};

  virtual HRESULT IsEnabled(LONG* aEnabled) noexcept = 0;
  virtual HRESULT GetPixmap(IGLPixmap** aPixmap) noexcept = 0;
  virtual HRESULT GetPixelZoom(float* aZoom) noexcept = 0;
  virtual HRESULT GetRectangle(int* aX, int* aY, int* aWidth, int* aHeight) noexcept = 0;
  virtual HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT OnData(LONG aSuccess) noexcept = 0;

 protected:
  ~IGLCapture() = default;
};
