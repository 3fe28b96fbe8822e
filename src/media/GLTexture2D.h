// GLTexture2D: draws a polygon with a pixmap as its 2-D texture. BeginDraw, Draw and EndDraw need a current
// GL context; Initialize runs on any thread.

#pragma once

#include <gllib/IGLTexture2D.h>

#include "component/GLObject.h"
#include "media/TextureLevels.h"

class GLTexture2D final : public GLObject<GLTexture2D, IGLTexture2D> {
 public:
  HRESULT Initialize(IGLPixmap* aPixmap) noexcept override;
  HRESULT BeginDraw(IGLContext* aContext, eGLTextureMode aTextureMode, LONG aInterpolatePixels,
                    LONG aInterpolateMipmaps, LONG aRepeat, GLDATA_POINT* aFaceNormal,
                    GLDATA_RGBA* aBlendColor) noexcept override;
  HRESULT Draw(float aTextureX, float aTextureY, GLDATA_POINT* aVertex) noexcept override;
  HRESULT EndDraw() noexcept override;

 private:
  TextureLevels m_Levels{GL_TEXTURE_2D};
};
