// An image drawn on a face.

#pragma once

#include <gllib/IGLTexture1D.h>

struct IGLContext;
struct IGLPixmap;

/// Texture.
struct IGLTexture2D : IUnknown {
  static constexpr IID Identifier = {
      0x61785FC9, 0x5A44, 0x4729, {0x83, 0x20, 0x3C, 0xF9, 0x86, 0x14, 0xA0, 0x3E}};

  virtual HRESULT Initialize(IGLPixmap* aPixmap) noexcept = 0;
  virtual HRESULT BeginDraw(IGLContext* aContext, eGLTextureMode aTextureMode, LONG aInterpolatePixels,
                            LONG aInterpolateMipmaps, LONG aRepeat, GLDATA_POINT* aFaceNormal,
                            GLDATA_RGBA* aBlendColor) noexcept = 0;
  virtual HRESULT Draw(float aTextureX, float aTextureY, GLDATA_POINT* aVertex) noexcept = 0;
  virtual HRESULT EndDraw() noexcept = 0;

 protected:
  ~IGLTexture2D() = default;
};
