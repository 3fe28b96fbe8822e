/// @file
/// GLTexture1D: a row of colours drawn across a strip of faces, a height scale for instance. Made by hosts.

#pragma once

#include <gllib/GLTypes.h>

struct IGLContext;
struct IGLPixmap;

/// How a texture meets the colour of the face. Any other value counts as decal.
enum eGLTextureMode : int {
  GLTM_MODULATE = 1,  ///< both multiplied, so that light shows
  GLTM_DECAL = 2,     ///< the texture over the face by its alpha
  GLTM_BLEND = 3      ///< between the face's colour and the blend colour, by the texture
};

/// A painter draws with it: BeginDraw, a Draw for each pair of vertices, EndDraw. The pixmap's rows, bottom
/// row first, count as one long row. Texture coordinate 0 is its left end, 1 its right end.
///
/// A texture belongs to no context and may be used in several: BeginDraw loads the image each time, into
/// whichever texture GL has bound. The scaled images of the smaller levels are made once, at the first
/// BeginDraw after Initialize, and again when the pixmap has changed its size; after other changes call
/// Initialize.
///
/// Threads: BeginDraw, Draw and EndDraw on the draw thread, in a painter or gauge; Initialize on any, not
/// during a drawing.
/// Results: S_OK; E_INVALIDARG from Initialize and BeginDraw for a null pointer. Draw tests nothing.
struct IGLTexture1D : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x58E698E2, 0xF176, 0x4C06, {0x8A, 0x86, 0xCC, 0xE0, 0x8A, 0x3E, 0x1F, 0xA1}};

  /// Takes a pixmap as image, with a reference of its own, and drops all levels.
  /// @return S_OK; E_INVALIDARG when aPixmap is null
  virtual HRESULT Initialize(IGLPixmap* aPixmap) noexcept = 0;
  /// Loads the image and opens a strip of quadrilaterals. Up to EndDraw only what GL allows within a
  /// primitive may be called. With no pixmap, or an empty one, the strip is drawn without the image.
  /// @param aContext            not used
  /// @param aTextureMode        how the image meets the colour of the face
  /// @param aInterpolatePixels  non-zero: between neighbouring pixels colours run
  /// @param aInterpolateMipmaps non-zero: between two levels colours run
  /// @param aRepeat             non-zero: the image repeats outside 0 to 1, else its edge goes on
  /// @param aFaceNormal         the normal of all vertices
  /// @param aBlendColor         what GLTM_BLEND blends with; null keeps the colour of an earlier drawing
  virtual HRESULT BeginDraw(IGLContext* aContext, eGLTextureMode aTextureMode, LONG aInterpolatePixels,
                            LONG aInterpolateMipmaps, LONG aRepeat, GLDATA_POINT* aFaceNormal,
                            GLDATA_RGBA* aBlendColor) noexcept = 0;
  /// Adds a pair of vertices, each with its texture coordinate.
  virtual HRESULT Draw(GLDATA_POINT* aVertex1, float aTextureX1, GLDATA_POINT* aVertex2,
                       float aTextureX2) noexcept = 0;
  /// Closes the strip and switches texturing off. Blending stays on.
  virtual HRESULT EndDraw() noexcept = 0;

 protected:
  ~IGLTexture1D() = default;
};
