// The file that holds the component, the type library in it, and its end. The documented Win32 operations;
// any thread.

#pragma once

#include <thread>

#include "platform/Types.h"

#ifndef _WIN32

/// The full path of a module. @return its length; 0 on failure, nSize when it doesn't fit
DWORD GetModuleFileNameA(HMODULE hModule, char* szPath, DWORD nSize) noexcept;

#endif

/// Enters the module's type library into the registry; off Windows there is none to enter.
HRESULT RegisterModuleTypeLib(const char* szPath) noexcept;
/// Takes the type library out of the registry.
HRESULT UnregisterModuleTypeLib(const char* szPath) noexcept;

/// Parts with a thread of the module's own that is still known when the module's statics end: joins it, but
/// for Windows, where the loader's lock is held then and no thread can end.
void LeaveThreadAtModuleEnd(std::thread& aThread) noexcept;
