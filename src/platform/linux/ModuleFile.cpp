// The module's file, as the dynamic loader reports it, and the end of the platform layer. Any thread.

#include "platform/ModuleFile.h"

#include <dlfcn.h>

#include <filesystem>
#include <string>
#include <utility>

#include "platform/Log.h"
#include "platform/linux/MessageThread.h"
#include "platform/linux/display/DisplayServer.h"
#include "platform/linux/fonts/FontLibrary.h"

namespace {

void* g_pSelf = nullptr;  // guarded by a lock of the callers

}  // namespace

namespace {

/// Returns the module's absolute path. The loader reports the name that the host passed, which may be
/// relative to the working directory at that time. So this runs while the module is loaded.
/// Only the directory is resolved: the file name may be a link with the version of the interface, which
/// remains valid when the file's version changes.
std::string PathWhileLoading() noexcept try {
  static const char here = 0;
  Dl_info info{};
  if (dladdr(&here, &info) == 0 || info.dli_fname == nullptr) return {};
  const std::filesystem::path file = std::filesystem::absolute(info.dli_fname);
  return std::filesystem::canonical(file.parent_path()) / file.filename();
} catch (...) {
  return {};
}

const std::string kModulePath = PathWhileLoading();

}  // namespace

std::string ModulePath() { return kModulePath; }

HRESULT RegisterModuleTypeLib(const std::string&) noexcept { return S_OK; }

HRESULT UnregisterModuleTypeLib(const std::string&) noexcept { return S_OK; }

void KeepModuleLoaded() noexcept {
  if (g_pSelf != nullptr) return;
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&KeepModuleLoaded), &info) == 0 || info.dli_fname == nullptr)
    return;
  g_pSelf = dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD);  // null if the component is part of the program
}

void ReleaseModule() noexcept {
  if (void* self = std::exchange(g_pSelf, nullptr)) dlclose(self);
}

// The display's thread posts messages, so it ends first.
void EndPlatform() noexcept {
  EndDisplay();
  MessageThread::Get().End();
  FontLibrary::Instance().End();
  EndLog();
}

void RunAtDetach(void (*)()) noexcept {}
