// Data blocks of the module, found by name without regard to case. The documented Win32 operations. Any
// thread.

#pragma once

#include "platform/Types.h"

#ifndef _WIN32

inline const char* const RT_RCDATA = reinterpret_cast<const char*>(std::uintptr_t{10});

HRSRC FindResourceA(HMODULE hModule, const char* szName, const char* szType) noexcept;
HGLOBAL LoadResource(HMODULE hModule, HRSRC hResource) noexcept;
void* LockResource(HGLOBAL hData) noexcept;
DWORD SizeofResource(HMODULE hModule, HRSRC hResource) noexcept;

#endif
