// Conversion between UTF-16 and 8-bit text. The documented Win32 operations; off Windows every code page but
// UTF-8 is Windows-1252. Any thread.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

inline constexpr UINT CP_ACP = 0, CP_THREAD_ACP = 3, CP_UTF8 = 65001;

/// @param nWide length in units; -1 for zero-terminated text, whose terminator is converted too
/// @param nBytes room in pBytes; 0 asks for the length alone
/// @return bytes written or needed; 0 on failure
int WideCharToMultiByte(UINT uCodePage, DWORD dwFlags, const GLWCHAR* pWide, int nWide, char* pBytes,
                        int nBytes, const char* szDefault, BOOL* pUsedDefault) noexcept;
int MultiByteToWideChar(UINT uCodePage, DWORD dwFlags, const char* pBytes, int nBytes, GLWCHAR* pWide,
                        int nWide) noexcept;

#endif
