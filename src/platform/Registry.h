// The registry: the documented Win32 operations that read it; RegistryBatch changes it. Off Windows the
// registry consists of machine.reg and user.reg, text files in the registry-script format. They are in the
// directory GLLIB_REGISTRY_DIR, or else in gllib/ under the XDG configuration directories. A file is always
// replaced as a whole. Any thread.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

using LSTATUS = LONG;
using REGSAM = DWORD;

inline const HKEY HKEY_CLASSES_ROOT = reinterpret_cast<HKEY>(std::uintptr_t{0x80000000});
inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(std::uintptr_t{0x80000001});
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(std::uintptr_t{0x80000002});
inline constexpr REGSAM KEY_READ = 0x20019, KEY_WOW64_64KEY = 0x100;
inline constexpr DWORD REG_NONE = 0, REG_SZ = 1, REG_BINARY = 3, REG_DWORD = 4;
inline constexpr LSTATUS ERROR_SUCCESS = 0, ERROR_FILE_NOT_FOUND = 2, ERROR_ACCESS_DENIED = 5,
                         ERROR_INVALID_HANDLE = 6, ERROR_MORE_DATA = 234, ERROR_INVALID_PARAMETER = 87,
                         ERROR_BADDB = 1009, ERROR_WRITE_FAULT = 29, ERROR_READ_FAULT = 30,
                         ERROR_LOCK_VIOLATION = 33;

LSTATUS RegOpenKeyExA(HKEY hKey, const char* szSubKey, DWORD dwOptions, REGSAM samDesired,
                      HKEY* phkResult) noexcept;
LSTATUS RegQueryValueExA(HKEY hKey, const char* szValueName, DWORD* pReserved, DWORD* pType, BYTE* pData,
                         DWORD* pcbData) noexcept;
LSTATUS RegCloseKey(HKEY hKey) noexcept;

#endif
