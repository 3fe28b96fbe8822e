// TextureLevels: images, levels and the GL state of a textured face. Any thread; functions that call GL need
// a current context.

#include "media/TextureLevels.h"

#include <algorithm>
#include <utility>

#include "platform/Log.h"

namespace {

/// The face that this thread draws has fewer levels than GL expects.
thread_local bool t_bLimited = false;

struct StoreParameter {
  GLenum m_uName;
  GLint m_iTight;
};

// Constants of OpenGL 1.2, which the headers of OpenGL 1.1 do not contain.
constexpr GLenum kTextureMaxLevel = 0x813D;
constexpr GLint kDefaultMaxLevel = 1000;

constexpr std::array<StoreParameter, 8> kTightStore = {{{GL_UNPACK_ALIGNMENT, 4},
                                                        {GL_UNPACK_ROW_LENGTH, 0},
                                                        {GL_UNPACK_SKIP_ROWS, 0},
                                                        {GL_UNPACK_SKIP_PIXELS, 0},
                                                        {GL_PACK_ALIGNMENT, 4},
                                                        {GL_PACK_ROW_LENGTH, 0},
                                                        {GL_PACK_SKIP_ROWS, 0},
                                                        {GL_PACK_SKIP_PIXELS, 0}}};

/// An alignment up to 4 leaves no gap between rows of 4-byte pixels. The other parameters must be 0.
constexpr bool IsTight(const StoreParameter& aParameter, GLint aValue) noexcept {
  return aParameter.m_iTight == 4 ? aValue <= 4 : aValue == 0;
}

}  // namespace

TightPixelStore::TightPixelStore() noexcept {
  for (std::size_t i = 0; i < kTightStore.size(); ++i) {
    glGetIntegerv(kTightStore[i].m_uName, &m_aiBefore[i]);
    if (!IsTight(kTightStore[i], m_aiBefore[i]))
      glPixelStorei(kTightStore[i].m_uName, kTightStore[i].m_iTight);
  }
}

TightPixelStore::~TightPixelStore() {
  for (std::size_t i = 0; i < kTightStore.size(); ++i) {
    if (!IsTight(kTightStore[i], m_aiBefore[i])) glPixelStorei(kTightStore[i].m_uName, m_aiBefore[i]);
  }
}

void TextureLevels::SetPixmap(IGLPixmap* aPixmap) noexcept {
  auto pixmap = GLPtr<IGLPixmap>::FromBorrowed(aPixmap);  // releases the former one without the lock
  const PLock lock(m_Lock);
  std::swap(m_pPixmap, pixmap);
  SetLevelsFor({0, 0, nullptr});
}

bool TextureLevels::HasPixmap() noexcept {
  const PLock lock(m_Lock);
  return static_cast<bool>(m_pPixmap);
}

/// Returns the pixmap as the texture target needs it: for 1-D, all rows joined to one row. A pixmap with
/// fewer pixels than its size requires counts as no image.
TextureLevels::Image TextureLevels::WholeImage() const noexcept {
  int count = 0, width = 0, height = 0;
  GLDATA_RGBA4B* pixels = nullptr;
  m_pPixmap->AccessPixmapData(&count, &pixels);
  if (m_uTarget == GL_TEXTURE_1D) {
    width = count;
    height = 1;
  } else {
    m_pPixmap->GetWidth(&width);
    m_pPixmap->GetHeight(&height);
  }
  if (pixels == nullptr || std::int64_t{width} * height > count) return {0, 0, nullptr};
  return {width, height, pixels};
}

/// Returns the image, or no image if it is too large. GL would refuse it and keep the image of an earlier
/// face. A very large width crashes Mesa 22.3.
TextureLevels::Image TextureLevels::LoadableImage() noexcept {
  const Image image = WholeImage();
  GLint most = 0;
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &most);
  const bool tooLarge = std::max(image.m_iWidth, image.m_iHeight) > most;
  if (tooLarge && !m_bTooLarge)
    LogWarning("a texture is drawn without its image: %d by %d pixels exceed GL's limit of %d",
               image.m_iWidth, image.m_iHeight, most);
  m_bTooLarge = tooLarge;
  return tooLarge ? Image{0, 0, nullptr} : image;
}

/// Counts the levels of an image and drops levels of another size. In 2-D the shorter side limits the number.
void TextureLevels::SetLevelsFor(const Image& aImage) noexcept {
  if (aImage.m_iWidth == m_iLevelsWidth && aImage.m_iHeight == m_iLevelsHeight) return;
  for (PixelBlock& level : m_ppMipLevels) level.reset();
  m_iLevelsWidth = aImage.m_iWidth;
  m_iLevelsHeight = aImage.m_iHeight;
  const bool oneRow = m_uTarget == GL_TEXTURE_1D;
  m_iMipLevels = 0;
  for (int w = m_iLevelsWidth, h = m_iLevelsHeight; w > 1 && (oneRow || h > 1); w /= 2, h /= 2)
    ++m_iMipLevels;
}

void TextureLevels::Load() noexcept {
  const PLock lock(m_Lock);
  const Image image = LoadableImage();
  LoadLevel(0, image);
  SetLevelsFor(image);
  for (int level = 1; level <= m_iMipLevels; ++level) {
    PixelBlock& block = m_ppMipLevels[static_cast<std::size_t>(level - 1)];
    Image scaled = {image.m_iWidth >> level, m_uTarget == GL_TEXTURE_1D ? 1 : image.m_iHeight >> level,
                    nullptr};
    if (block == nullptr) MakeLevel(image, scaled, block);
    if (block == nullptr) continue;
    scaled.m_pPixels = block.get();
    LoadLevel(level, scaled);
  }
  t_bLimited = m_uTarget == GL_TEXTURE_2D && std::max(image.m_iWidth, image.m_iHeight) >> m_iMipLevels > 1;
  if (t_bLimited) glTexParameteri(m_uTarget, kTextureMaxLevel, m_iMipLevels);
}

void TextureLevels::EndFace() noexcept {
  if (std::exchange(t_bLimited, false)) glTexParameteri(m_uTarget, kTextureMaxLevel, kDefaultMaxLevel);
}

/// Scales the whole image to the size of a level. Leaves the block null if no memory is available or no GL
/// context is current.
void TextureLevels::MakeLevel(const Image& aImage, const Image& aLevel, PixelBlock& aBlock) const noexcept {
  if (!IsGLCurrent()) return;
  const TightPixelStore tight;  // GLU uses the pixel store parameters
  aBlock = NewPixels(static_cast<std::size_t>(aLevel.m_iWidth) * static_cast<std::size_t>(aLevel.m_iHeight));
  if (aBlock == nullptr) return;
  const GLint failure =
      gluScaleImage(GL_RGBA, aImage.m_iWidth, aImage.m_iHeight, GL_UNSIGNED_BYTE, aImage.m_pPixels,
                    aLevel.m_iWidth, aLevel.m_iHeight, GL_UNSIGNED_BYTE, aBlock.get());
  if (failure != 0) aBlock.reset();
}

void TextureLevels::LoadLevel(int aLevel, const Image& aImage) const noexcept {
  if (m_uTarget == GL_TEXTURE_1D) {
    glTexImage1D(m_uTarget, aLevel, 4, aImage.m_iWidth, 0, GL_RGBA, GL_UNSIGNED_BYTE, aImage.m_pPixels);
  } else {
    glTexImage2D(m_uTarget, aLevel, 4, aImage.m_iWidth, aImage.m_iHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 aImage.m_pPixels);
  }
}

void EnableTexture(GLenum aTarget, GLenum aOther) noexcept {
  glDisable(aOther);
  glEnable(aTarget);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

void SetTextureLook(GLenum aTarget, eGLTextureMode aMode, LONG aInterpolatePixels, LONG aInterpolateMipmaps,
                    const GLDATA_RGBA* aBlendColor) noexcept {
  const GLint mode = aMode == GLTM_MODULATE ? GL_MODULATE : aMode == GLTM_BLEND ? GL_BLEND : GL_DECAL;
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, mode);
  if (aBlendColor != nullptr) {
    const GLfloat color[] = {aBlendColor->m_fRed, aBlendColor->m_fGreen, aBlendColor->m_fBlue,
                             aBlendColor->m_fAlpha};
    glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, color);
  }
  // Existing hosts expect this mapping: aInterpolateMipmaps interpolates within a level, aInterpolatePixels
  // between levels.
  static constexpr GLint kMinFilters[2][2] = {{GL_NEAREST_MIPMAP_NEAREST, GL_LINEAR_MIPMAP_NEAREST},
                                              {GL_NEAREST_MIPMAP_LINEAR, GL_LINEAR_MIPMAP_LINEAR}};
  glTexParameteri(aTarget, GL_TEXTURE_MAG_FILTER, aInterpolatePixels != 0 ? GL_LINEAR : GL_NEAREST);
  glTexParameteri(aTarget, GL_TEXTURE_MIN_FILTER,
                  kMinFilters[aInterpolatePixels != 0 ? 1 : 0][aInterpolateMipmaps != 0 ? 1 : 0]);
}
