// The module's type library: its first TYPELIB resource, entered and taken out by COM's own operations; and
// the module's end. Any thread.

#include "platform/ModuleFile.h"

#include <gllib/GLPtr.h>

#include <cstdlib>
#include <string>

#include "platform/Log.h"
#include "platform/Window.h"
#include "platform/windows/WideText.h"

std::string ModulePath() {
  constexpr std::size_t kLongestPath = 32768;  // with its zero
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
  GLPtr<ITypeLib> library;
  const HRESULT loaded = LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Put());
  return FAILED(loaded) ? loaded : RegisterTypeLib(library.Get(), path.data(), nullptr);
} catch (...) {
  return E_OUTOFMEMORY;
}

HRESULT UnregisterModuleTypeLib(const std::string& aPath) noexcept try {
  GLPtr<ITypeLib> library;
  const HRESULT loaded = LoadTypeLibEx(WideText(aPath).c_str(), REGKIND_NONE, library.Put());
  if (FAILED(loaded)) return loaded;
  TLIBATTR* attributes = nullptr;
  const HRESULT asked = library->GetLibAttr(&attributes);
  if (FAILED(asked)) return asked;
  const HRESULT removed = UnRegisterTypeLib(attributes->guid, attributes->wMajorVerNum,
                                            attributes->wMinorVerNum, attributes->lcid, attributes->syskind);
  library->ReleaseTLibAttr(attributes);
  return removed == TYPE_E_REGISTRYACCESS ? S_OK : removed;  // it had no entry
} catch (...) {
  return E_OUTOFMEMORY;
}

void KeepModuleLoaded() noexcept {}

void ReleaseModule() noexcept {}

void EndPlatform() noexcept { EndLog(); }

void RunAtDetach(void (*aFunction)()) noexcept { std::atexit(aFunction); }
