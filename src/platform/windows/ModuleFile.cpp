// The module's type library: its first TYPELIB resource, entered and taken out by COM's own operations; and
// the module's end. Any thread.

#include "platform/ModuleFile.h"

#include <gllib/GLPtr.h>

#include <cstdlib>
#include <string>

#include "platform/Text.h"

namespace {

std::wstring Wide(const char* aText) {
  const int units = MultiByteToWideChar(CP_ACP, 0, aText, -1, nullptr, 0);
  std::wstring wide(units > 0 ? static_cast<std::size_t>(units) : 1, L'\0');
  MultiByteToWideChar(CP_ACP, 0, aText, -1, wide.data(), units);
  return wide;
}

}  // namespace

HRESULT RegisterModuleTypeLib(const char* szPath) noexcept try {
  std::wstring path = Wide(szPath);
  GLPtr<ITypeLib> library;
  const HRESULT loaded = LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Put());
  return FAILED(loaded) ? loaded : RegisterTypeLib(library.Get(), path.data(), nullptr);
} catch (...) {
  return E_OUTOFMEMORY;
}

HRESULT UnregisterModuleTypeLib(const char* szPath) noexcept try {
  GLPtr<ITypeLib> library;
  const HRESULT loaded = LoadTypeLibEx(Wide(szPath).c_str(), REGKIND_NONE, library.Put());
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

void EndPlatform() noexcept {}

void RunAtDetach(void (*aFunction)()) noexcept { std::atexit(aFunction); }
