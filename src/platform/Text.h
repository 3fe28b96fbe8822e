// Conversion between UTF-16 and 8-bit text. The documented Win32 operations. Off Windows every code page
// except UTF-8 is Windows-1252. Any thread.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

inline constexpr UINT CP_ACP = 0, CP_THREAD_ACP = 3, CP_UTF8 = 65001;

/// Converts UTF-16 to 8-bit text.
/// @param nWide length in units; -1 for zero-terminated text, whose terminator is also converted
/// @param nBytes size of pBytes; 0 to query the needed size
/// @return bytes written or needed; 0 on failure
int WideCharToMultiByte(UINT uCodePage, DWORD dwFlags, const GLWCHAR* pWide, int nWide, char* pBytes,
                        int nBytes, const char* szDefault, BOOL* pUsedDefault) noexcept;
int MultiByteToWideChar(UINT uCodePage, DWORD dwFlags, const char* pBytes, int nBytes, GLWCHAR* pWide,
                        int nWide) noexcept;

#endif
