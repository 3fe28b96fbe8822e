// Pixel formats of a device context, numbered from 1. The documented GDI operations. Any thread.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

struct PIXELFORMATDESCRIPTOR {
  WORD nSize, nVersion;
  DWORD dwFlags;
  BYTE iPixelType, cColorBits;
  BYTE cRedBits, cRedShift, cGreenBits, cGreenShift, cBlueBits, cBlueShift, cAlphaBits, cAlphaShift;
  BYTE cAccumBits, cAccumRedBits, cAccumGreenBits, cAccumBlueBits, cAccumAlphaBits;
  BYTE cDepthBits, cStencilBits, cAuxBuffers, iLayerType, bReserved;
  DWORD dwLayerMask, dwVisibleMask, dwDamageMask;
};

inline constexpr DWORD PFD_DOUBLEBUFFER = 0x1, PFD_STEREO = 0x2, PFD_DRAW_TO_WINDOW = 0x4,
                       PFD_DRAW_TO_BITMAP = 0x8, PFD_SUPPORT_GDI = 0x10, PFD_SUPPORT_OPENGL = 0x20,
                       PFD_GENERIC_FORMAT = 0x40, PFD_NEED_PALETTE = 0x80, PFD_NEED_SYSTEM_PALETTE = 0x100,
                       PFD_SWAP_EXCHANGE = 0x200, PFD_SWAP_COPY = 0x400, PFD_SWAP_LAYER_BUFFERS = 0x800,
                       PFD_GENERIC_ACCELERATED = 0x1000;
inline constexpr BYTE PFD_TYPE_RGBA = 0, PFD_TYPE_COLORINDEX = 1, PFD_MAIN_PLANE = 0;

/// Chooses the format closest to the request.
/// @return its number; 0 if there is none
int ChoosePixelFormat(HDC hDC, const PIXELFORMATDESCRIPTOR* pRequest) noexcept;
/// Sets the format of a device context. It can be set only once.
BOOL SetPixelFormat(HDC hDC, int iFormat, const PIXELFORMATDESCRIPTOR* pRequest) noexcept;
/// Describes a format.
/// @return the highest format number; 0 on failure
int DescribePixelFormat(HDC hDC, int iFormat, UINT nBytes, PIXELFORMATDESCRIPTOR* pFormat) noexcept;
/// Shows the back buffer. Fails if the window is destroyed or the connection is broken.
BOOL SwapBuffers(HDC hDC) noexcept;

#endif
