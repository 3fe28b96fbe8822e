// The file that holds the component, as the dynamic loader knows it. Any thread.

#include "platform/ModuleFile.h"

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <memory>

DWORD GetModuleFileNameA(HMODULE, char* szPath, DWORD nSize) noexcept {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&GetModuleFileNameA), &info) == 0 || info.dli_fname == nullptr)
    return 0;
  const std::unique_ptr<char, void (*)(void*)> full(realpath(info.dli_fname, nullptr), std::free);
  const char* path = full != nullptr ? full.get() : info.dli_fname;
  const std::size_t length = std::strlen(path);
  if (length >= nSize) return nSize;
  std::memcpy(szPath, path, length + 1);
  return static_cast<DWORD>(length);
}

HRESULT RegisterModuleTypeLib(const char*) noexcept { return S_OK; }

HRESULT UnregisterModuleTypeLib(const char*) noexcept { return S_OK; }
