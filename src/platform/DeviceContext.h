// Device contexts of windows and in memory, and deletion of GDI objects. The documented GDI operations. Any
// thread.

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

/// Returns the device context of a window, valid until ReleaseDC; for null, of the whole screen.
/// @return null on failure
HDC GetDC(HWND hWnd) noexcept;
int ReleaseDC(HWND hWnd, HDC hDC) noexcept;

/// Creates a memory device context. GL can draw on it after a bitmap is selected and a pixel format is set.
/// It has one buffer.
HDC CreateCompatibleDC(HDC hDC) noexcept;
BOOL DeleteDC(HDC hDC) noexcept;
/// Creates a bitmap to draw into.
/// @return null if a side is below 1 or above the limit of the driver
HBITMAP CreateDIBSection(HDC hDC, const BITMAPINFO* pbmi, UINT usage, void** ppvBits, HANDLE hSection,
                         DWORD offset) noexcept;

/// Selects a bitmap or a font.
/// @return the object selected before; null on failure
HGDIOBJ SelectObject(HDC hDC, HGDIOBJ h) noexcept;
/// Deletes a bitmap, a font or a palette.
BOOL DeleteObject(HGDIOBJ h) noexcept;

#endif
