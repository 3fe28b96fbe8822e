// Bitmap lists and advances of a font, by GDI and WGL. Functions that compile lists need a current GL
// context; the others run on any thread.

#include "platform/Fonts.h"

#include <initializer_list>

#include "platform/GL.h"
#include "platform/Log.h"

namespace {

/// Sets GL's default unpack parameters for a scope: some implementations of wglUseFontBitmapsA do not set all
/// of them.
class DefaultUnpacking {
 public:
  DefaultUnpacking() noexcept {
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    for (const GLenum parameter : {GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST, GL_UNPACK_ROW_LENGTH,
                                   GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS}) {
      glPixelStorei(parameter, 0);
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
  }
  ~DefaultUnpacking() { glPopClientAttrib(); }
  DefaultUnpacking(const DefaultUnpacking&) = delete;
  DefaultUnpacking& operator=(const DefaultUnpacking&) = delete;
};

enum class Image { kUnknown, kBlank, kInk };

/// Returns whether a character has an image, and its metrics. kUnknown, without metrics, if the font has no
/// outlines.
Image LookAt(HDC aDC, DWORD aCode, GLYPHMETRICS* aMetrics) noexcept {
  constexpr MAT2 kUpright{{0, 1}, {0, 0}, {0, 0}, {0, 1}};
  const DWORD size = GetGlyphOutlineA(aDC, aCode, GGO_BITMAP, aMetrics, 0, nullptr, &kUpright);
  if (size == GDI_ERROR) return Image::kUnknown;
  return size == 0 ? Image::kBlank : Image::kInk;
}

void CompileBlank(GLuint aList, const GLYPHMETRICS& aMetrics) noexcept {
  constexpr GLubyte kNothing = 0;
  glNewList(aList, GL_COMPILE);
  glBitmap(0, 0, 0.0f, 0.0f, aMetrics.gmCellIncX, aMetrics.gmCellIncY, &kNothing);
  glEndList();
}

}  // namespace

// The message names no file, since the font mapper does not report one.
void NoteFace(HDC hDC, const GLWCHAR* szWanted) noexcept {
  WCHAR used[LF_FACESIZE] = L"";
  if (!IsLogged(LogLevel::kWarning) || *szWanted == 0) return;
  if (GetTextFaceW(hDC, LF_FACESIZE, used) <= 0 || lstrcmpiW(used, szWanted) == 0) return;
  char wantedText[4 * LF_FACESIZE] = "", usedText[4 * LF_FACESIZE] = "";
  WideCharToMultiByte(CP_ACP, 0, szWanted, -1, wantedText, sizeof(wantedText), nullptr, nullptr);
  WideCharToMultiByte(CP_ACP, 0, used, -1, usedText, sizeof(usedText), nullptr, nullptr);
  LogWarning("there is no font face \"%s\": %s is used", wantedText, usedText);
}

// Compiles blank characters here. The system compiles them with a null image, which some drivers report as a
// lack of memory in the next glGetError.
BOOL UseFontBitmaps(HDC hDC, DWORD first, DWORD count, DWORD listBase) noexcept {
  const DefaultUnpacking unpacking;
  DWORD begun = 0;  // first character with an image whose list is not yet compiled
  const auto compile = [&](DWORD aEnd) {
    return aEnd == begun || wglUseFontBitmapsA(hDC, first + begun, aEnd - begun, listBase + begun) != FALSE;
  };
  for (DWORD i = 0; i < count; ++i) {
    GLYPHMETRICS metrics{};
    if (LookAt(hDC, first + i, &metrics) != Image::kBlank) continue;
    if (!compile(i)) return FALSE;
    CompileBlank(listBase + i, metrics);
    begun = i + 1;
  }
  return compile(count);
}

// Returns the advance of a list of UseFontBitmaps. Other functions differ: GetCharWidthFloatA uses units of
// 1/16. It and GetCharWidth32A may measure a glyph that is hinted for grey levels, up to a pixel wider or
// narrower.
BOOL GetAdvances(HDC hDC, UINT iFirst, UINT iLast, FLOAT* pWidths) noexcept {
  for (UINT code = iFirst; code <= iLast; ++code) {
    GLYPHMETRICS metrics{};
    INT width = 0;
    if (LookAt(hDC, code, &metrics) != Image::kUnknown) {
      width = metrics.gmCellIncX;
    } else if (GetCharWidth32A(hDC, code, code, &width) == FALSE) {
      return FALSE;
    }
    pWidths[code - iFirst] = static_cast<FLOAT>(width);
  }
  return TRUE;
}
