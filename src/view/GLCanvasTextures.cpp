// GLCanvas: textures. The arguments are passed to GL unchanged. Draw thread.
// The enumerations have GL's values. Parameters for byte and value counts are ignored, since GL takes none.

#include "diagnostics/GLErrorCheck.h"
#include "platform/GL.h"
#include "view/GLCanvas.h"

namespace {

// Constants of EXT_texture_lod_bias, which the headers of OpenGL 1.1 do not contain.
constexpr GLenum kTextureFilterControl = 0x8500;
constexpr GLenum kTextureLodBias = 0x8501;

constexpr GLenum GL(int aEnumerator) noexcept { return static_cast<GLenum>(aEnumerator); }

/// Returns whether the interface defines a capability. None of these capabilities decides about hits.
constexpr bool IsOfTextures(eGLEnable aCapability) noexcept {
  return aCapability == GLE_COLOR_MATERIAL || aCapability == GLE_TEXTURE_2D ||
         aCapability == GLE_TEXTURE_GEN_S || aCapability == GLE_TEXTURE_GEN_T;
}

}  // namespace

HRESULT GLCanvas::GenTextures(int nTextures, unsigned int* pnTextureIDs) noexcept {
  const GLErrorCheck check("IGLCanvas::GenTextures");
  if (pnTextureIDs == nullptr) return E_INVALIDARG;
  glGenTextures(nTextures, pnTextureIDs);
  return S_OK;
}

HRESULT GLCanvas::BindTexture2D(unsigned int nTextureID) noexcept {
  const GLErrorCheck check("IGLCanvas::BindTexture2D");
  glBindTexture(GL_TEXTURE_2D, nTextureID);
  return S_OK;
}

HRESULT GLCanvas::TexImage2D(int nLevel, int nInternalFormat, int nWidth, int nHeight, int nBorder,
                             eGLTexFormat eFormat, eGLDataType eType, int /*nDataBytes*/,
                             unsigned char* pbyPixels) noexcept {
  const GLErrorCheck check("IGLCanvas::TexImage2D");
  // With null, GL allocates an image with undefined texels.
  glTexImage2D(GL_TEXTURE_2D, nLevel, nInternalFormat, nWidth, nHeight, nBorder, GL(eFormat), GL(eType),
               pbyPixels);
  return S_OK;
}

HRESULT GLCanvas::Enable(eGLEnable eEnable) noexcept {
  const GLErrorCheck check("IGLCanvas::Enable");
  if (!IsOfTextures(eEnable)) DrawsWhole();
  glEnable(GL(eEnable));
  return S_OK;
}

HRESULT GLCanvas::Disable(eGLEnable eDisable) noexcept {
  const GLErrorCheck check("IGLCanvas::Disable");
  if (!IsOfTextures(eDisable)) DrawsWhole();
  glDisable(GL(eDisable));
  return S_OK;
}

HRESULT GLCanvas::TexGeni(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nValue) noexcept {
  const GLErrorCheck check("IGLCanvas::TexGeni");
  glTexGeni(GL(eCoord), GL(ePName), nValue);
  return S_OK;
}

HRESULT GLCanvas::TexGend(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, double dValue) noexcept {
  const GLErrorCheck check("IGLCanvas::TexGend");
  glTexGend(GL(eCoord), GL(ePName), dValue);
  return S_OK;
}

HRESULT GLCanvas::TexGeniv(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int /*nCount*/,
                           int* pnValue) noexcept {
  const GLErrorCheck check("IGLCanvas::TexGeniv");
  if (pnValue == nullptr) return E_INVALIDARG;
  glTexGeniv(GL(eCoord), GL(ePName), pnValue);
  return S_OK;
}

HRESULT GLCanvas::TexGendv(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int /*nCount*/,
                           double* pdValue) noexcept {
  const GLErrorCheck check("IGLCanvas::TexGendv");
  if (pdValue == nullptr) return E_INVALIDARG;
  glTexGendv(GL(eCoord), GL(ePName), pdValue);
  return S_OK;
}

HRESULT GLCanvas::TexParameteri2D(eGLTextureParameterName ePName, int nValue) noexcept {
  const GLErrorCheck check("IGLCanvas::TexParameteri2D");
  glTexParameteri(GL_TEXTURE_2D, GL(ePName), nValue);
  return S_OK;
}

HRESULT GLCanvas::TexEnvi(eGLTextureEnvTarget eTarget, eGLTextureEnvParameter ePName, int nValue) noexcept {
  const GLErrorCheck check("IGLCanvas::TexEnvi");
  glTexEnvi(GL(eTarget), GL(ePName), nValue);
  return S_OK;
}

HRESULT GLCanvas::TexCoord2f(float fS, float fT) noexcept {
  glTexCoord2f(fS, fT);
  return S_OK;
}

HRESULT GLCanvas::TexCoord2d(double dS, double dT) noexcept {
  glTexCoord2d(dS, dT);
  return S_OK;
}

HRESULT GLCanvas::Build2DMipmaps(int nInternalFormat, int nWidth, int nHeight, eGLTexFormat eFormat,
                                 eGLDataType eType, int /*nDataBytes*/, unsigned char* pbyPixels) noexcept {
  const GLErrorCheck check("IGLCanvas::Build2DMipmaps");
  if (pbyPixels == nullptr) return E_INVALIDARG;
  if (!IsGLCurrent()) return S_OK;
  gluBuild2DMipmaps(GL_TEXTURE_2D, nInternalFormat, nWidth, nHeight, GL(eFormat), GL(eType), pbyPixels);
  glTexEnvf(kTextureFilterControl, kTextureLodBias, -0.5f);  // selects more detailed levels
  return S_OK;
}
