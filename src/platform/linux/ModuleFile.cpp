// The file that holds the component, as the dynamic loader knows it. Any thread.

#include "platform/ModuleFile.h"

#include <dlfcn.h>

#include <cstring>
#include <filesystem>
#include <string>

DWORD GetModuleFileNameA(HMODULE, char* szPath, DWORD nSize) noexcept {
  // The folder is resolved, the name stays: a link with the interface's version outlives the file's version.
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&GetModuleFileNameA), &info) == 0 || info.dli_fname == nullptr)
    return 0;
  try {
    const std::filesystem::path file = std::filesystem::absolute(info.dli_fname);
    const std::string path = std::filesystem::canonical(file.parent_path()) / file.filename();
    if (path.size() >= nSize) return nSize;
    std::memcpy(szPath, path.c_str(), path.size() + 1);
    return static_cast<DWORD>(path.size());
  } catch (...) {
    return 0;
  }
}

HRESULT RegisterModuleTypeLib(const char*) noexcept { return S_OK; }

HRESULT UnregisterModuleTypeLib(const char*) noexcept { return S_OK; }

void LeaveThreadAtModuleEnd(std::thread& aThread) noexcept { aThread.join(); }
