// Fonts: the documented GDI and WGL operations. With GL current where lists are compiled; else any thread.

#pragma once

#include "platform/DeviceContext.h"

#ifndef _WIN32

struct POINTFLOAT {
  FLOAT x, y;
};
/// Metrics of one glyph in em units; the cell increments carry the pen to the next glyph.
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

/// A font by its face and style. @return null with no font on the system
HFONT CreateFontW(int cHeight, int cWidth, int cEscapement, int cOrientation, int cWeight, DWORD bItalic,
                  DWORD bUnderline, DWORD bStrikeOut, DWORD iCharSet, DWORD iOutPrecision,
                  DWORD iClipPrecision, DWORD iQuality, DWORD iPitchAndFamily,
                  const GLWCHAR* szFace) noexcept;
/// The stock system font: always there.
HGDIOBJ GetStockObject(int i) noexcept;
BOOL GetTextMetricsA(HDC hDC, TEXTMETRICA* pMetrics) noexcept;
BOOL GetCharWidthFloatA(HDC hDC, UINT iFirst, UINT iLast, FLOAT* pWidths) noexcept;
BOOL wglUseFontBitmapsA(HDC hDC, DWORD first, DWORD count, DWORD listBase) noexcept;
BOOL wglUseFontOutlinesA(HDC hDC, DWORD first, DWORD count, DWORD listBase, FLOAT deviation, FLOAT extrusion,
                         int format, GLYPHMETRICSFLOAT* pMetrics) noexcept;

/// CreateFontW itself reports a substituted face here.
inline void NoteFace(HDC, const GLWCHAR*) noexcept {}

#else

/// Warns in the log where the selected font has another face than the wanted one.
void NoteFace(HDC hDC, const GLWCHAR* szWanted) noexcept;

#endif

/// What wglUseFontBitmapsA does, where the system's own leaves a GL error behind or minds how images are
/// unpacked.
BOOL UseFontBitmaps(HDC hDC, DWORD first, DWORD count, DWORD listBase) noexcept;
/// What GetCharWidthFloatA documents, where the system's own counts in other units: advances of device units.
BOOL GetAdvances(HDC hDC, UINT iFirst, UINT iLast, FLOAT* pWidths) noexcept;
