// GLFont: builds the lists and widths of the kinds that use the platform's fonts. Draw thread, with GL
// current.

#include <algorithm>
#include <cmath>

#include "diagnostics/GLErrorCheck.h"
#include "media/GLFont.h"
#include "platform/Text.h"

namespace {

/// Returns aValue rounded towards zero and limited to the range of int; 0 for NaN.
int Truncated(float aValue) noexcept {
  if (std::isnan(aValue)) return 0;
  return static_cast<int>(std::clamp(static_cast<double>(aValue), -2147483647.0, 2147483647.0));
}

DWORD PitchAndFamily(int aStyle) noexcept {
  struct Family {
    int m_iBit;
    DWORD m_dwFamily;
  };
  static constexpr Family kFamilies[] = {{GLFS_SCRIPT, FF_SCRIPT},
                                         {GLFS_DECORATIVE, FF_DECORATIVE},
                                         {GLFS_MODERN, FF_MODERN},
                                         {GLFS_ROMAN, FF_ROMAN}};
  const DWORD pitch = (aStyle & GLFS_FIXED_PITCH) != 0 ? FIXED_PITCH : VARIABLE_PITCH;
  for (const Family& family : kFamilies) {
    if ((aStyle & family.m_iBit) != 0) return pitch | family.m_dwFamily;
  }
  return pitch | FF_SWISS;
}

}  // namespace

bool GLFont::CreateFontLists() noexcept {
  const GLSiteLink::Use site(m_pContext.get());
  return site && CreateFontLists(*site);
}

bool GLFont::EnsureLists(GLContextSite& aSite) noexcept {
  if (aSite.IsListKeyValid(m_uListKey)) return true;
  m_uListKey = 0;
  return CreateFontLists(aSite);
}

bool GLFont::CreateFontLists(GLContextSite& aSite) noexcept {
  if (aSite.IsListKeyValid(m_uListKey)) aSite.DeleteListKey(m_uListKey, kCodes);
  m_uListKey = aSite.GenListKey(kCodes);
  const GLuint base = aSite.GetListBase(m_uListKey);
  if (base == 0) return false;
  const GLErrorCheck check("the build of a font");
  // A rebuild writes equal widths, so that concurrent readers get the same results.
  const bool created = CreateKindLists(aSite, base);
  m_bCreated.store(created, std::memory_order_release);
  if (!created && !m_bRefused) {
    char face[4 * kFaceRoom] = "";
    WideCharToMultiByte(CP_UTF8, 0, m_szFace, -1, face, sizeof(face), nullptr, nullptr);
    LogWarning("a font with the face \"%s\" cannot be built: its text is not drawn", face);
  }
  m_bRefused = !created;
  if (!created) {
    aSite.DeleteListKey(m_uListKey, kCodes);
    m_uListKey = 0;
  }
  return created;
}

bool GLFont::CreateKindLists(GLContextSite& aSite, GLuint aBase) noexcept {
  if (m_bInternal) return CreateInternalLists(aSite, aBase);
  if (IsSystem()) return CreateSystemLists(aBase);
  return CreateDeviceLists(aSite.DeviceContext(), aBase);
}

bool GLFont::CreateSystemLists(GLuint aBase) noexcept {
  const HDC dc = GetDC(nullptr);
  if (dc == nullptr) return false;
  const HGDIOBJ old = SelectObject(dc, GetStockObject(SYSTEM_FONT));
  TEXTMETRICA metrics{};
  bool created = UseFontBitmaps(dc, 0, kCodes, aBase) != FALSE && GetTextMetricsA(dc, &metrics) != FALSE;
  if (created) {
    m_fHeight = static_cast<float>(metrics.tmHeight);
    m_fWidth = static_cast<float>(metrics.tmAveCharWidth);
    created = SetMetricsFromWidths(dc);
  }
  if (old != nullptr) SelectObject(dc, old);
  ReleaseDC(nullptr, dc);
  return created;
}

bool GLFont::CreateDeviceLists(HDC aDC, GLuint aBase) noexcept {
  m_iWeight = std::clamp<int>(m_iWeight, 0, 1000);
  const int style = m_iStyle;
  const auto has = [&](int aStyle) { return (style & aStyle) != 0 ? DWORD{TRUE} : DWORD{FALSE}; };
  const int height = m_bTrueType ? 0 : Truncated(m_fHeight);
  const int width = m_bTrueType || m_bAverageWidth ? 0 : Truncated(m_fWidth);
  const HFONT font = CreateFontW(height, width, 0, Truncated(m_fOrientation * 10.0f), m_iWeight,
                                 has(GLFS_ITALIC), has(GLFS_UNDERLINE), has(GLFS_STRIKEOUT), ANSI_CHARSET,
                                 m_bTrueType ? OUT_TT_ONLY_PRECIS : OUT_RASTER_PRECIS, CLIP_DEFAULT_PRECIS,
                                 PROOF_QUALITY, PitchAndFamily(style), m_szFace);
  if (font == nullptr) return false;
  bool created = false;
  if (const HGDIOBJ old = SelectObject(aDC, font); old != nullptr) {
    NoteFace(aDC, m_szFace);
    created = m_bTrueType ? CreateOutlineLists(aDC, aBase) : CreateRasterLists(aDC, aBase);
    SelectObject(aDC, old);
  }
  DeleteObject(font);
  return created;
}

bool GLFont::CreateRasterLists(HDC aDC, GLuint aBase) noexcept {
  if (!UseFontBitmaps(aDC, 0, kCodes, aBase)) return false;
  if (m_bAverageWidth) {
    TEXTMETRICA metrics{};
    if (!GetTextMetricsA(aDC, &metrics)) return false;
    m_fWidth = static_cast<float>(metrics.tmAveCharWidth);
  }
  return SetMetricsFromWidths(aDC);
}

bool GLFont::CreateOutlineLists(HDC aDC, GLuint aBase) noexcept {
  GlyphMetrics metrics{};
  const float extrusion = m_fExtrusionZ == 0.0f ? 0.0f : 1.0f;
  if (!wglUseFontOutlinesA(aDC, 0, kCodes, aBase, 0.0f, extrusion, WGL_FONT_POLYGONS, metrics.data())) {
    return false;
  }
  SetMetrics(metrics);
  return true;
}

// Stores widths as fractions of the font's width. GetStringWidth multiplies them by it.
bool GLFont::SetMetricsFromWidths(HDC aDC) noexcept {
  FLOAT widths[kCodes] = {};
  if (!GetAdvances(aDC, 0, kCodes - 1, widths)) return false;
  GlyphMetrics metrics;
  for (std::size_t code = 0; code < metrics.size(); ++code) {
    const float width = widths[code] / m_fWidth;
    metrics[code] = {width, 1.0f, {0.0f, 0.0f}, width, 0.0f};
  }
  SetMetrics(metrics);
  return true;
}

void GLFont::SetMetrics(const GlyphMetrics& aMetrics) noexcept {
  for (std::size_t code = 0; code < aMetrics.size(); ++code) {
    GLYPHMETRICSFLOAT& own = m_arGlyphMetrics[code];
    own.gmfBlackBoxX = aMetrics[code].gmfBlackBoxX;
    own.gmfBlackBoxY = aMetrics[code].gmfBlackBoxY;
    own.gmfptGlyphOrigin = aMetrics[code].gmfptGlyphOrigin;
    own.gmfCellIncY = aMetrics[code].gmfCellIncY;
    // Hosts may measure text concurrently, with the widths of the previous build.
    std::atomic_ref(own.gmfCellIncX).store(aMetrics[code].gmfCellIncX, std::memory_order_relaxed);
  }
}
