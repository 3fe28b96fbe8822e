// A band of colours drawn along a strip of faces.

#pragma once

#include <gllib/GLTypes.h>

struct IGLContext;
struct IGLPixmap;

enum eGLTextureMode : int { GLTM_MODULATE = 1, GLTM_DECAL = 2, GLTM_BLEND = 3 };

/// Texture.
struct IGLTexture1D : IUnknown {
  static constexpr IID Identifier = {
      0x58E698E2, 0xF176, 0x4C06, {0x8A, 0x86, 0xCC, 0xE0, 0x8A, 0x3E, 0x1F, 0xA1}};

  virtual HRESULT Initialize(IGLPixmap* aPixmap) noexcept = 0;
  virtual HRESULT BeginDraw(IGLContext* aContext, eGLTextureMode aTextureMode, LONG aInterpolatePixels,
                            LONG aInterpolateMipmaps, LONG aRepeat, GLDATA_POINT* aFaceNormal,
                            GLDATA_RGBA* aBlendColor) noexcept = 0;
  virtual HRESULT Draw(GLDATA_POINT* aVertex1, float aTextureX1, GLDATA_POINT* aVertex2,
                       float aTextureX2) noexcept = 0;
  virtual HRESULT EndDraw() noexcept = 0;

 protected:
  ~IGLTexture1D() = default;
};
