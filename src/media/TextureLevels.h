// TextureLevels: the common part of both texture classes. Holds the image and its scaled-down levels, and
// loads them into the bound texture. Any thread, also several draw threads at once; Load needs a current GL
// context.

#pragma once

#include <gllib/GLPtr.h>
#include <gllib/IGLPixmap.h>
#include <gllib/IGLTexture1D.h>

#include <array>

#include "media/PixelBlock.h"
#include "platform/GL.h"
#include "thread/PCriticalSection.h"

/// The image of a texture object. Load makes its mipmap levels, which are kept in main memory.
class TextureLevels {
 public:
  /// @param aTarget GL_TEXTURE_1D or GL_TEXTURE_2D
  explicit TextureLevels(GLenum aTarget) noexcept : m_uTarget(aTarget) {}

  /// Sets the image and drops all levels, also if it is the same image.
  void SetPixmap(IGLPixmap* aPixmap) noexcept;
  bool HasPixmap() noexcept;

  /// Loads the image and its levels into the bound texture. Makes missing levels first; skips a level if no
  /// memory is available. Needs a current GL context with unpack parameters for tightly packed pixels.
  /// Limits GL to the levels that exist, so that it draws an image whose longer side still exceeds 1 in the
  /// last level. An image that is too large for GL counts as empty.
  void Load() noexcept;
  /// Removes this limit from the bound texture. Called after the face, outside of a primitive.
  void EndFace() noexcept;

 private:
  /// An image in memory.
  struct Image {
    int m_iWidth, m_iHeight;
    const void* m_pPixels;
  };

  Image WholeImage() const noexcept;
  Image LoadableImage() noexcept;
  void SetLevelsFor(const Image& aImage) noexcept;
  void MakeLevel(const Image& aImage, const Image& aLevel, PixelBlock& aBlock) const noexcept;
  void LoadLevel(int aLevel, const Image& aImage) const noexcept;

  const GLenum m_uTarget;
  PCriticalSection m_Lock;  // guards the following members
  GLPtr<IGLPixmap> m_pPixmap;
  int m_iMipLevels = 0;                      ///< without the image itself
  bool m_bTooLarge = false;                  ///< the last image was too large for GL
  std::array<PixelBlock, 30> m_ppMipLevels;  ///< as many as the longest row of pixels can be halved
  // The image size that the levels belong to; 0 before the first Load.
  int m_iLevelsWidth = 0;
  int m_iLevelsHeight = 0;
};

/// Sets GL's pixel store parameters for tightly packed RGBA pixels, for a scope, and then restores the
/// previous values. Parameters that already fit are not changed.
class TightPixelStore {
 public:
  TightPixelStore() noexcept;
  ~TightPixelStore();
  TightPixelStore(const TightPixelStore&) = delete;
  TightPixelStore& operator=(const TightPixelStore&) = delete;

 private:
  std::array<GLint, 8> m_aiBefore{};
};

/// Sets the state of a textured face: enables aTarget, disables aOther, and blends by alpha.
void EnableTexture(GLenum aTarget, GLenum aOther) noexcept;

/// Sets the environment and the filters of the bound texture.
/// @param aBlendColor null keeps the environment's colour
void SetTextureLook(GLenum aTarget, eGLTextureMode aMode, LONG aInterpolatePixels, LONG aInterpolateMipmaps,
                    const GLDATA_RGBA* aBlendColor) noexcept;
