// The platform's own version: the documented Win32 query; any thread.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

struct OSVERSIONINFOA {
  DWORD dwOSVersionInfoSize, dwMajorVersion, dwMinorVersion, dwBuildNumber, dwPlatformId;
  char szCSDVersion[128];
};
inline constexpr DWORD VER_PLATFORM_WIN32_WINDOWS = 1, VER_PLATFORM_WIN32_NT = 2;

/// Fills the record; dwPlatformId is the display's own answer: 2 where it renders off-screen.
BOOL GetVersionExA(OSVERSIONINFOA* pInfo) noexcept;

#endif
