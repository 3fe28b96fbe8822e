// GLTexture1D: a strip of quads with a row of pixels along it. BeginDraw, Draw and EndDraw need a current GL
// context.

#include "media/GLTexture1D.h"

#include "component/Catalogue.h"

HRESULT CreateGLTexture1D(IUnknown* aOuter, REFIID riid, void** ppv) noexcept {
  return CreateGLObject<GLTexture1D>(aOuter, riid, ppv);
}

HRESULT GLTexture1D::Initialize(IGLPixmap* aPixmap) noexcept {
  if (aPixmap == nullptr) return E_INVALIDARG;
  m_Levels.SetPixmap(aPixmap);
  return S_OK;
}

HRESULT GLTexture1D::BeginDraw(IGLContext*, eGLTextureMode aTextureMode, LONG aInterpolatePixels,
                               LONG aInterpolateMipmaps, LONG aRepeat, GLDATA_POINT* aFaceNormal,
                               GLDATA_RGBA* aBlendColor) noexcept {
  if (aFaceNormal == nullptr) return E_INVALIDARG;
  EnableTexture(GL_TEXTURE_1D, GL_TEXTURE_2D);
  if (m_Levels.HasPixmap()) {
    SetTextureLook(GL_TEXTURE_1D, aTextureMode, aInterpolatePixels, aInterpolateMipmaps, aBlendColor);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_WRAP_S, aRepeat != 0 ? GL_REPEAT : GL_CLAMP);
    // A clipped image may have left unpack parameters that would read past the pixels. The scope restores
    // them.
    const TightPixelStore tight;
    m_Levels.Load();
  }
  glBegin(GL_QUAD_STRIP);
  glNormal3d(aFaceNormal->x, aFaceNormal->y, aFaceNormal->z);
  return S_OK;
}

HRESULT GLTexture1D::Draw(GLDATA_POINT* aVertex1, float aTextureX1, GLDATA_POINT* aVertex2,
                          float aTextureX2) noexcept {
  glTexCoord1f(aTextureX1);
  glVertex3d(aVertex1->x, aVertex1->y, aVertex1->z);
  glTexCoord1f(aTextureX2);
  glVertex3d(aVertex2->x, aVertex2->y, aVertex2->z);
  return S_OK;
}

HRESULT GLTexture1D::EndDraw() noexcept {
  glEnd();
  glDisable(GL_TEXTURE_1D);
  return S_OK;
}
