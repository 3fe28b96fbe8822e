// The file that holds the component, as the dynamic loader knows it, and the end of the platform layer. Any
// thread.

#include "platform/ModuleFile.h"

#include <dlfcn.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <utility>

#include "platform/linux/MessageThread.h"
#include "platform/linux/display/DisplayServer.h"

namespace {

void* g_pSelf = nullptr;  // guarded by the end of the module

}  // namespace

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

void KeepModuleLoaded() noexcept {
  if (g_pSelf != nullptr) return;
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&KeepModuleLoaded), &info) == 0 || info.dli_fname == nullptr)
    return;
  g_pSelf = dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD);  // null where it is part of the program
}

void ReleaseModule() noexcept {
  if (void* self = std::exchange(g_pSelf, nullptr)) dlclose(self);
}

// The display's thread posts messages, so that it ends first.
void EndPlatform() noexcept {
  EndDisplay();
  MessageThread::Get().End();
}

void RunAtDetach(void (*)()) noexcept {}
