// GLFont: the internal kind. Its lists draw cells of a glyph atlas, which is a data block of the module. Draw
// thread, with GL current.

#include "media/GLFont.h"
#include "media/TextureLevels.h"
#include "platform/Resources.h"
#include "platform/Text.h"
#include "platform/Window.h"

namespace {

constexpr GLsizei kAtlasWidth = 128;
constexpr GLsizei kAtlasHeight = 256;
constexpr DWORD kAtlasBytes = kAtlasWidth * kAtlasHeight * 4;

/// Returns the texels of an atlas as RGBA, lowest row first.
/// @return null if there is no atlas of this name
const void* FindAtlas(const GLWCHAR* aFace) noexcept {
  char name[4 * GLFont::kFaceRoom] = "";  // UTF-8; the names of the atlases are ASCII letters
  WideCharToMultiByte(CP_UTF8, 0, aFace, -1, name, sizeof(name), nullptr, nullptr);
  const HMODULE module = ModuleInstance();
  const HRSRC resource = FindResourceA(module, name, RT_RCDATA);
  if (resource == nullptr || SizeofResource(module, resource) != kAtlasBytes) return nullptr;
  const HGLOBAL data = LoadResource(module, resource);
  return data != nullptr ? LockResource(data) : nullptr;
}

/// Compiles one list: the quad of a cell, half a unit to the right of the pen and above it, and the step to
/// the next character.
void CompileCell(GLuint aList, int aCode) noexcept {
  constexpr float kCell = 0.0625f;  // a cell is a sixteenth of the atlas in both directions
  const float u = static_cast<float>(aCode & 15) * 8.0f * 0.0078125f;
  const float t = 1.0f - static_cast<float>(aCode >> 4) * 16.0f * 0.00390625f;
  glNewList(aList, GL_COMPILE);
  glBegin(GL_QUADS);
  glTexCoord2f(u, t - kCell);
  glVertex2f(0.5f, 0.5f);
  glTexCoord2f(u + kCell, t - kCell);
  glVertex2f(8.5f, 0.5f);
  glTexCoord2f(u + kCell, t);
  glVertex2f(8.5f, 16.5f);
  glTexCoord2f(u, t);
  glVertex2f(0.375f, 16.5f);  // 1/8 left of the lower corner; existing hosts expect this cell outline
  glEnd();
  glTranslated(9.0, 0.0, 0.0);
  glEndList();
}

/// Uploads the texels to a texture and restores the previous binding. Otherwise the host's next image would
/// replace the atlas. The scope sets the unpack parameters, since a clipped image may have changed them.
void LoadAtlas(GLuint aTexture, const void* aTexels) noexcept {
  const TightPixelStore tight;
  GLint before = 0;
  glGetIntegerv(GL_TEXTURE_BINDING_2D, &before);
  glBindTexture(GL_TEXTURE_2D, aTexture);
  glTexImage2D(GL_TEXTURE_2D, 0, 4, kAtlasWidth, kAtlasHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE, aTexels);
  glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(before));
}

}  // namespace

bool GLFont::CreateInternalLists(GLContextSite& aSite, GLuint aBase) noexcept {
  const void* texels = FindAtlas(m_szFace);
  if (texels == nullptr) return false;
  // The window's texture remains valid after a capture. A capture's texture is destroyed with its rendering
  // context.
  const ULONG context = aSite.WindowContextNumber();
  if (m_uWindowTexture != 0 && context != 0 && context == m_uWindowContext)
    glDeleteTextures(1, &m_uWindowTexture);
  glGenTextures(1, &m_uTexture);
  if (context != 0) {
    m_uWindowTexture = m_uTexture;
    m_uWindowContext = context;
  }
  LoadAtlas(m_uTexture, texels);
  m_fWidth = 8.0f;
  m_fHeight = 16.0f;
  m_iStyle = GLFS_FIXED_PITCH;
  m_iWeight = 400;
  GlyphMetrics metrics;
  for (int code = 0; code < kCodes; ++code) {
    CompileCell(aBase + static_cast<GLuint>(code), code);
    metrics[static_cast<std::size_t>(code)] = {1.0f, 1.0f, {0.0f, 0.0f}, 1.0f, 1.0f};
  }
  SetMetrics(metrics);
  return true;
}
