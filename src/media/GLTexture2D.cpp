// GLTexture2D: a polygon with an image on it. BeginDraw, Draw and EndDraw need a current GL context.

#include "media/GLTexture2D.h"

#include "component/Catalogue.h"

HRESULT CreateGLTexture2D(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLTexture2D>(aOuter, riid, ppv);
}

HRESULT GLTexture2D::Initialize(IGLPixmap* aPixmap) noexcept {
  if (aPixmap == nullptr) return E_INVALIDARG;
  m_Levels.SetPixmap(aPixmap);
  return S_OK;
}

HRESULT GLTexture2D::BeginDraw(IGLContext*, eGLTextureMode aTextureMode, LONG aInterpolatePixels,
                               LONG aInterpolateMipmaps, LONG aRepeat, GLDATA_POINT* aFaceNormal,
                               GLDATA_RGBA* aBlendColor) noexcept {
  if (aFaceNormal == nullptr) return E_INVALIDARG;
  EnableTexture(GL_TEXTURE_2D, GL_TEXTURE_1D);
  if (m_Levels.HasPixmap()) {
    SetTextureLook(GL_TEXTURE_2D, aTextureMode, aInterpolatePixels, aInterpolateMipmaps, aBlendColor);
    const GLint wrap = aRepeat != 0 ? GL_REPEAT : GL_CLAMP;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrap);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrap);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    m_Levels.Load();
  }
  glBegin(GL_POLYGON);
  glNormal3d(aFaceNormal->x, aFaceNormal->y, aFaceNormal->z);
  return S_OK;
}

HRESULT GLTexture2D::Draw(float aTextureX, float aTextureY, GLDATA_POINT* aVertex) noexcept {
  glTexCoord2f(aTextureX, aTextureY);
  glVertex3d(aVertex->x, aVertex->y, aVertex->z);
  return S_OK;
}

HRESULT GLTexture2D::EndDraw() noexcept {
  glEnd();
  m_Levels.EndFace();
  glDisable(GL_TEXTURE_2D);
  return S_OK;
}
