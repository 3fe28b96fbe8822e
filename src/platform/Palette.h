// Logical palettes, for displays whose formats need one. The documented GDI operations. Any thread.

#pragma once

#include "platform/DeviceContext.h"

#ifndef _WIN32

struct PALETTEENTRY {
  BYTE peRed, peGreen, peBlue, peFlags;
};
struct LOGPALETTE {
  WORD palVersion, palNumEntries;
  PALETTEENTRY palPalEntry[1];
};
inline constexpr UINT GDI_ERROR = 0xFFFFFFFF;

HPALETTE CreatePalette(const LOGPALETTE* pPalette) noexcept;
/// @return the palette selected before; null on failure
HPALETTE SelectPalette(HDC hDC, HPALETTE hPalette, BOOL bForceBackground) noexcept;
/// @return the number of entries mapped; GDI_ERROR on failure
UINT RealizePalette(HDC hDC) noexcept;
BOOL UpdateColors(HDC hDC) noexcept;

#endif
