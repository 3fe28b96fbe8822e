// Device contexts: a window's own, memory ones with a bitmap selected, and the release of GDI objects.
// The documented GDI operations; any thread.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

struct BITMAPINFOHEADER {
  DWORD biSize;
  LONG biWidth, biHeight;
  WORD biPlanes, biBitCount;
  DWORD biCompression, biSizeImage;
  LONG biXPelsPerMeter, biYPelsPerMeter;
  DWORD biClrUsed, biClrImportant;
};
struct RGBQUAD {
  BYTE rgbBlue, rgbGreen, rgbRed, rgbReserved;
};
struct BITMAPINFO {
  BITMAPINFOHEADER bmiHeader;
  RGBQUAD bmiColors[1];
};
inline constexpr UINT DIB_RGB_COLORS = 0;

/// The device context of a window, held until ReleaseDC; of the whole screen for null. @return null on
/// failure
HDC GetDC(HWND hWnd) noexcept;
int ReleaseDC(HWND hWnd, HDC hDC) noexcept;

/// A memory device context, single-buffered once a bitmap is selected into it and a GL format set.
HDC CreateCompatibleDC(HDC hDC) noexcept;
BOOL DeleteDC(HDC hDC) noexcept;
/// A bitmap to draw into. @return null for sizes that can't be drawn (0, or past what the driver can draw)
HBITMAP CreateDIBSection(HDC hDC, const BITMAPINFO* pbmi, UINT usage, void** ppvBits, HANDLE hSection,
                         DWORD offset) noexcept;

/// Selects a bitmap or a font. @return what was selected before, null on failure
HGDIOBJ SelectObject(HDC hDC, HGDIOBJ h) noexcept;
/// Ends a bitmap, a font or a palette.
BOOL DeleteObject(HGDIOBJ h) noexcept;

#endif
