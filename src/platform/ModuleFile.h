// The file that holds the component, and the type library in it. The documented Win32 operations; any thread.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

/// The full path of a module. @return its length; 0 on failure, nSize when it doesn't fit
DWORD GetModuleFileNameA(HMODULE hModule, char* szPath, DWORD nSize) noexcept;

#endif

/// Enters the module's type library into the registry; off Windows there is none to enter.
HRESULT RegisterModuleTypeLib(const char* szPath) noexcept;
/// Takes the type library out of the registry.
HRESULT UnregisterModuleTypeLib(const char* szPath) noexcept;
