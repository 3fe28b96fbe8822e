// GLTexture1D: draws a strip of quads with a pixmap as its 1-D texture. BeginDraw, Draw and EndDraw need a
// current GL context; Initialize runs on any thread.

#pragma once

#include <gllib/IGLTexture1D.h>

#include "component/GLObject.h"
#include "media/TextureLevels.h"

class GLTexture1D final : public GLObject<GLTexture1D, IGLTexture1D> {
 public:
  HRESULT Initialize(IGLPixmap* aPixmap) noexcept override;
  HRESULT BeginDraw(IGLContext* aContext, eGLTextureMode aTextureMode, LONG aInterpolatePixels,
                    LONG aInterpolateMipmaps, LONG aRepeat, GLDATA_POINT* aFaceNormal,
                    GLDATA_RGBA* aBlendColor) noexcept override;
  HRESULT Draw(GLDATA_POINT* aVertex1, float aTextureX1, GLDATA_POINT* aVertex2,
               float aTextureX2) noexcept override;
  HRESULT EndDraw() noexcept override;

 private:
  TextureLevels m_Levels{GL_TEXTURE_1D};
};
