/// @file
/// GLTexture1D: a row of colours drawn across a strip of faces, for example a height scale. Hosts create
/// textures.

#pragma once

#include <gllib/GLTypes.h>

struct IGLContext;
struct IGLPixmap;

/// How the texture and the colour of the face are combined. Any other value is treated as decal.
enum eGLTextureMode : int {
  GLTM_MODULATE = 1,  ///< multiplies both, so that lighting is visible
  GLTM_DECAL = 2,     ///< draws the texture over the face by its alpha
  GLTM_BLEND = 3      ///< interpolates from the face's colour to the blend colour
};

/// A painter calls BeginDraw, then Draw for each pair of vertices, then EndDraw. The rows of the pixmap,
/// bottom row first, form one long row. Texture coordinate 0 is its left end, 1 its right end.
///
/// A texture belongs to no context and may be used in several. Each BeginDraw loads the image into the
/// texture that is bound in GL. The first BeginDraw after Initialize scales the images of the smaller levels;
/// a later one scales them again if the size of the pixmap has changed. After other changes of the pixmap
/// call Initialize.
///
/// Threads: BeginDraw, Draw and EndDraw in a painter or gauge, also of several contexts at the same time;
/// Initialize on any thread, at any time: it waits for a running BeginDraw and takes effect at the next one.
/// The pixmap must not change during a BeginDraw. To replace an image that is being drawn, call Initialize
/// with another pixmap.
/// Results: S_OK; E_INVALIDARG if aPixmap or aFaceNormal is null. Draw checks no arguments.
struct IGLTexture1D : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x58E698E2, 0xF176, 0x4C06, {0x8A, 0x86, 0xCC, 0xE0, 0x8A, 0x3E, 0x1F, 0xA1}};

  /// Sets the image, takes a reference to it, and deletes all levels.
  virtual HRESULT Initialize(IGLPixmap* aPixmap) noexcept = 0;
  /// Loads the image and begins a strip of quadrilaterals. Until EndDraw only calls that GL allows within a
  /// primitive are valid. Without a pixmap, or with one that is empty or longer than GL's largest texture,
  /// the strip is drawn without an image.
  /// @param aContext            not used
  /// @param aTextureMode        how the image and the colour of the face are combined
  /// @param aInterpolatePixels  non-zero: an enlarged image is interpolated between neighbouring texels, a
  ///                            reduced one between two levels
  /// @param aInterpolateMipmaps non-zero: a reduced image is interpolated between neighbouring texels of a
  ///                            level; no effect on an enlarged one
  /// @param aRepeat             non-zero: the image repeats outside 0 to 1; 0: the texels at its edge
  ///                            continue, mixed with GL's border colour where they are interpolated
  /// @param aFaceNormal         the normal of all vertices
  /// @param aBlendColor         the blend colour of GLTM_BLEND; null keeps the last one
  virtual HRESULT BeginDraw(IGLContext* aContext, eGLTextureMode aTextureMode, LONG aInterpolatePixels,
                            LONG aInterpolateMipmaps, LONG aRepeat, GLDATA_POINT* aFaceNormal,
                            GLDATA_RGBA* aBlendColor) noexcept = 0;
  /// Adds a pair of vertices, each with its texture coordinate.
  virtual HRESULT Draw(GLDATA_POINT* aVertex1, float aTextureX1, GLDATA_POINT* aVertex2,
                       float aTextureX2) noexcept = 0;
  /// Ends the strip and switches texturing off. Blending remains on.
  virtual HRESULT EndDraw() noexcept = 0;

 protected:
  ~IGLTexture1D() = default;
};
