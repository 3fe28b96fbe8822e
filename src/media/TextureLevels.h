// TextureLevels: what both kinds of texture share: the image with its scaled-down levels, and the loading of
// them into the texture that GL has bound. Made, changed and freed on any thread; loaded where GL is current.

#pragma once

#include <gllib/GLPtr.h>
#include <gllib/IGLPixmap.h>
#include <gllib/IGLTexture1D.h>

#include <array>

#include "media/PixelBlock.h"
#include "platform/GL.h"

/// The image of a texture object, with its mipmap levels in main memory from the first loading on.
class TextureLevels {
 public:
  /// @param aTarget GL_TEXTURE_1D or GL_TEXTURE_2D
  explicit TextureLevels(GLenum aTarget) noexcept : m_uTarget(aTarget) {}

  /// Takes another image, or the same one anew; the levels of the one before are dropped.
  void SetPixmap(IGLPixmap* aPixmap) noexcept;
  bool HasPixmap() const noexcept { return static_cast<bool>(m_pPixmap); }

  /// Loads the image and all of its levels into the bound texture, making the levels that aren't there yet.
  /// One without memory is left out. Where GL is current; the unpack parameters are to suit tightly packed
  /// pixels.
  void Load() noexcept;

 private:
  /// An image as it lies in memory.
  struct Image {
    int m_iWidth, m_iHeight;
    const void* m_pPixels;
  };

  Image WholeImage() const noexcept;
  void SetLevelsFor(const Image& aImage) noexcept;
  void MakeLevel(const Image& aImage, const Image& aLevel, PixelBlock& aBlock) const noexcept;
  void LoadLevel(int aLevel, const Image& aImage) const noexcept;

  GLenum m_uTarget;
  GLPtr<IGLPixmap> m_pPixmap;
  int m_iMipLevels = 0;                      ///< below the image itself
  std::array<PixelBlock, 30> m_ppMipLevels;  ///< as many as the longest row of pixels can be halved
  // The size that the levels are made for; 0 before they are.
  int m_iLevelsWidth = 0;
  int m_iLevelsHeight = 0;
};

/// GL's pixel store parameters, set so that tightly packed RGBA pixels go in and come out, for a scope. What
/// stood before stands again afterwards; a parameter that suits is not touched.
class TightPixelStore {
 public:
  TightPixelStore() noexcept;
  ~TightPixelStore();
  TightPixelStore(const TightPixelStore&) = delete;
  TightPixelStore& operator=(const TightPixelStore&) = delete;

 private:
  std::array<GLint, 8> m_aiBefore{};
};

/// The state of a textured face: one target on and the other off, blending by alpha.
void EnableTexture(GLenum aTarget, GLenum aOther) noexcept;

/// Environment and filters of the bound texture.
/// @param aBlendColor null leaves the environment's colour as it is
void SetTextureLook(GLenum aTarget, eGLTextureMode aMode, LONG aInterpolatePixels, LONG aInterpolateMipmaps,
                    const GLDATA_RGBA* aBlendColor) noexcept;
