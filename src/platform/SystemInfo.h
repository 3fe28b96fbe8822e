// Version of the platform: the documented Win32 query. Any thread.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

struct OSVERSIONINFOA {
  DWORD dwOSVersionInfoSize, dwMajorVersion, dwMinorVersion, dwBuildNumber, dwPlatformId;
  char szCSDVersion[128];
};
inline constexpr DWORD VER_PLATFORM_WIN32_WINDOWS = 1, VER_PLATFORM_WIN32_NT = 2;

/// Fills the record. dwPlatformId is the value of the display: 2 if it renders off-screen.
BOOL GetVersionExA(OSVERSIONINFOA* pInfo) noexcept;

#endif
