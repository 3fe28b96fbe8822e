// The module's type library, its first TYPELIB resource, registered by COM's own functions, and the end of
// the module. Any thread.

#include "platform/ModuleFile.h"

#include <atomic>
#include <memory>
#include <string>

#include "platform/Log.h"
#include "platform/Window.h"
#include "platform/windows/WideText.h"

namespace {

struct Release {
  void operator()(IUnknown* aObject) const noexcept { aObject->Release(); }
};
using TypeLib = std::unique_ptr<ITypeLib, Release>;

HRESULT Load(const std::wstring& aPath, TypeLib& aLibrary) noexcept {
  ITypeLib* library = nullptr;
  const HRESULT loaded = LoadTypeLibEx(aPath.c_str(), REGKIND_NONE, &library);
  aLibrary.reset(library);
  return loaded;
}

std::atomic<void (*)()> g_pfnDetach{nullptr};

}  // namespace

// At the end of the process (aReserved is not null) the system has already ended all other threads. Windows
// and rendering contexts must then be left to the system: their destruction waits for threads of the driver.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD aReason, LPVOID aReserved) {
  const auto detach = g_pfnDetach.load();
  if (aReason == DLL_PROCESS_DETACH && aReserved == nullptr && detach != nullptr) detach();
  return TRUE;
}

std::string ModulePath() {
  constexpr std::size_t kLongestPath = 32768;  // including the terminating zero
  std::wstring path(kLongestPath, L'\0');
  const DWORD length = GetModuleFileNameW(ModuleInstance(), path.data(), static_cast<DWORD>(path.size()));
  if (length == 0 || length >= path.size()) return {};
  const int units = static_cast<int>(length);
  std::string text(static_cast<std::size_t>(
                       WideCharToMultiByte(CP_UTF8, 0, path.data(), units, nullptr, 0, nullptr, nullptr)),
                   '\0');
  WideCharToMultiByte(CP_UTF8, 0, path.data(), units, text.data(), static_cast<int>(text.size()), nullptr,
                      nullptr);
  return text;
}

HRESULT RegisterModuleTypeLib(const std::string& aPath) noexcept try {
  std::wstring path = WideText(aPath);
  TypeLib library;
  const HRESULT loaded = Load(path, library);
  return FAILED(loaded) ? loaded : RegisterTypeLib(library.get(), path.data(), nullptr);
} catch (...) {
  return E_OUTOFMEMORY;
}

HRESULT UnregisterModuleTypeLib(const std::string& aPath) noexcept try {
  TypeLib library;
  const HRESULT loaded = Load(WideText(aPath), library);
  if (FAILED(loaded)) return loaded;
  TLIBATTR* attributes = nullptr;
  const HRESULT asked = library->GetLibAttr(&attributes);
  if (FAILED(asked)) return asked;
  const HRESULT removed = UnRegisterTypeLib(attributes->guid, attributes->wMajorVerNum,
                                            attributes->wMinorVerNum, attributes->lcid, attributes->syskind);
  library->ReleaseTLibAttr(attributes);
  return removed == TYPE_E_REGISTRYACCESS ? S_OK : removed;  // it was not registered
} catch (...) {
  return E_OUTOFMEMORY;
}

void KeepModuleLoaded() noexcept {}

void ReleaseModule() noexcept {}

void EndPlatform() noexcept { EndLog(); }

void RunAtDetach(void (*aFunction)()) noexcept { g_pfnDetach = aFunction; }
