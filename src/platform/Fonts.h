// Fonts: the documented GDI and WGL operations. Operations that compile lists need a current GL context; the
// others run on any thread.

#pragma once

#include "platform/DeviceContext.h"

#ifndef _WIN32

struct POINTFLOAT {
  FLOAT x, y;
};
/// Metrics of one glyph, in em units. The cell increments move the pen to the next glyph.
struct GLYPHMETRICSFLOAT {
  FLOAT gmfBlackBoxX, gmfBlackBoxY;
  POINTFLOAT gmfptGlyphOrigin;
  FLOAT gmfCellIncX, gmfCellIncY;
};
struct TEXTMETRICA {
  LONG tmHeight, tmAscent, tmDescent, tmInternalLeading, tmExternalLeading, tmAveCharWidth, tmMaxCharWidth;
};

inline constexpr int SYSTEM_FONT = 13, WGL_FONT_LINES = 0, WGL_FONT_POLYGONS = 1;
inline constexpr DWORD ANSI_CHARSET = 0, OUT_RASTER_PRECIS = 6, OUT_TT_ONLY_PRECIS = 7,
                       CLIP_DEFAULT_PRECIS = 0, PROOF_QUALITY = 2, FIXED_PITCH = 1, VARIABLE_PITCH = 2,
                       FF_ROMAN = 0x10, FF_SWISS = 0x20, FF_MODERN = 0x30, FF_SCRIPT = 0x40,
                       FF_DECORATIVE = 0x50;

/// Creates a font from a face name and a style.
/// @return null if the system has no font
HFONT CreateFontW(int cHeight, int cWidth, int cEscapement, int cOrientation, int cWeight, DWORD bItalic,
                  DWORD bUnderline, DWORD bStrikeOut, DWORD iCharSet, DWORD iOutPrecision,
                  DWORD iClipPrecision, DWORD iQuality, DWORD iPitchAndFamily,
                  const GLWCHAR* szFace) noexcept;
/// Returns the stock system font, which always exists.
HGDIOBJ GetStockObject(int i) noexcept;
BOOL GetTextMetricsA(HDC hDC, TEXTMETRICA* pMetrics) noexcept;
BOOL GetCharWidthFloatA(HDC hDC, UINT iFirst, UINT iLast, FLOAT* pWidths) noexcept;
BOOL wglUseFontBitmapsA(HDC hDC, DWORD first, DWORD count, DWORD listBase) noexcept;
BOOL wglUseFontOutlinesA(HDC hDC, DWORD first, DWORD count, DWORD listBase, FLOAT deviation, FLOAT extrusion,
                         int format, GLYPHMETRICSFLOAT* pMetrics) noexcept;

/// Does nothing: CreateFontW reports a substituted face.
inline void NoteFace(HDC, const GLWCHAR*) noexcept {}

#else

/// Logs a warning if the face of the selected font is not the wanted one.
void NoteFace(HDC hDC, const GLWCHAR* szWanted) noexcept;

#endif

/// wglUseFontBitmapsA without the faults of some implementations: it leaves no GL error and ignores the
/// unpack parameters.
BOOL UseFontBitmaps(HDC hDC, DWORD first, DWORD count, DWORD listBase) noexcept;
/// Returns advances in device units, as documented for GetCharWidthFloatA. Some implementations use other
/// units.
BOOL GetAdvances(HDC hDC, UINT iFirst, UINT iLast, FLOAT* pWidths) noexcept;
