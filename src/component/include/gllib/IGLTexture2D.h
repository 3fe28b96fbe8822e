/// @file
/// GLTexture2D: an image drawn on a face. Made by hosts.

#pragma once

#include <gllib/IGLTexture1D.h>

/// A painter draws with it: BeginDraw, a Draw for each vertex of one convex face, EndDraw. Texture
/// coordinates run from 0, 0 at the image's lower left corner to 1, 1 at its upper right. What else holds for
/// IGLTexture1D holds here: levels, threads, results.
struct IGLTexture2D : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x61785FC9, 0x5A44, 0x4729, {0x83, 0x20, 0x3C, 0xF9, 0x86, 0x14, 0xA0, 0x3E}};

  /// As IGLTexture1D::Initialize.
  virtual HRESULT Initialize(IGLPixmap* aPixmap) noexcept = 0;
  /// As IGLTexture1D::BeginDraw, for a polygon. GL's unpack parameters stay changed.
  virtual HRESULT BeginDraw(IGLContext* aContext, eGLTextureMode aTextureMode, LONG aInterpolatePixels,
                            LONG aInterpolateMipmaps, LONG aRepeat, GLDATA_POINT* aFaceNormal,
                            GLDATA_RGBA* aBlendColor) noexcept = 0;
  /// Adds a vertex with its texture coordinates.
  virtual HRESULT Draw(float aTextureX, float aTextureY, GLDATA_POINT* aVertex) noexcept = 0;
  /// Closes the polygon and switches texturing off. Blending stays on.
  virtual HRESULT EndDraw() noexcept = 0;

 protected:
  ~IGLTexture2D() = default;
};
