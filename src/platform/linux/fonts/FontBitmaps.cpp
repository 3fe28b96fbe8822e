// wglUseFontBitmapsA: one list per code, which draws a bitmap at the raster position and advances it. Needs a
// current GL context.

#include "platform/GL.h"
#include "platform/linux/fonts/FontObject.h"

namespace {

/// Sets the unpack parameters to the layout of GlyphBitmap, and restores the caller's.
class ByteRows {
 public:
  ByteRows() noexcept {
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_SWAP_BYTES, GL_FALSE);
    glPixelStorei(GL_UNPACK_LSB_FIRST, GL_FALSE);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  }
  ~ByteRows() { glPopClientAttrib(); }
  ByteRows(const ByteRows&) = delete;
  ByteRows& operator=(const ByteRows&) = delete;
};

void CompileBitmap(GLuint aList, const GlyphBitmap& aBitmap) noexcept {
  glNewList(aList, GL_COMPILE);
  glBitmap(aBitmap.m_iWidth, aBitmap.m_iRows, static_cast<float>(-aBitmap.m_iLeft),
           static_cast<float>(-aBitmap.m_iBottom), static_cast<float>(aBitmap.m_iAdvance), 0.0f,
           aBitmap.m_vBits.empty() ? nullptr : aBitmap.m_vBits.data());
  glEndList();
}

}  // namespace

BOOL wglUseFontBitmapsA(HDC hDC, DWORD first, DWORD count, DWORD listBase) noexcept {
  const FontObject* font = SelectedFont(hDC);
  if (font == nullptr || first > 256 || count > 256 - first) return FALSE;
  const ByteRows rows;
  try {
    for (DWORD i = 0; i < count; ++i)
      CompileBitmap(listBase + i, font->Bitmap(static_cast<unsigned char>(first + i)));
  } catch (...) {
    return FALSE;
  }
  return TRUE;
}

BOOL UseFontBitmaps(HDC hDC, DWORD first, DWORD count, DWORD listBase) noexcept {
  return wglUseFontBitmapsA(hDC, first, count, listBase);
}
