/// @file
/// GLTexture2D: an image drawn on a face. Hosts create textures.

#pragma once

#include <gllib/IGLTexture1D.h>

/// A painter calls BeginDraw, then Draw for each vertex of one convex face, then EndDraw. Texture coordinates
/// are 0, 0 at the lower left corner of the image and 1, 1 at the upper right. Levels, threads and results as
/// at IGLTexture1D.
struct IGLTexture2D : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x61785FC9, 0x5A44, 0x4729, {0x83, 0x20, 0x3C, 0xF9, 0x86, 0x14, 0xA0, 0x3E}};

  /// Same as IGLTexture1D::Initialize.
  virtual HRESULT Initialize(IGLPixmap* aPixmap) noexcept = 0;
  /// Same as IGLTexture1D::BeginDraw, for a polygon; GL's limit holds for each side. GL's unpack parameters
  /// remain changed.
  virtual HRESULT BeginDraw(IGLContext* aContext, eGLTextureMode aTextureMode, LONG aInterpolatePixels,
                            LONG aInterpolateMipmaps, LONG aRepeat, GLDATA_POINT* aFaceNormal,
                            GLDATA_RGBA* aBlendColor) noexcept = 0;
  /// Adds a vertex with its texture coordinates.
  virtual HRESULT Draw(float aTextureX, float aTextureY, GLDATA_POINT* aVertex) noexcept = 0;
  /// Ends the polygon and switches texturing off. Blending remains on.
  virtual HRESULT EndDraw() noexcept = 0;

 protected:
  ~IGLTexture2D() = default;
};
