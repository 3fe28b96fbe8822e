// The module's own entries in the registry, under HKEY_CLASSES_ROOT. Any thread.

#include "component/Registration.h"

#include <array>
#include <cstdio>
#include <string>

#include "component/Catalogue.h"
#include "platform/ModuleFile.h"
#include "platform/Registry.h"
#include "platform/Window.h"

namespace {

constexpr char kTypeLib[] = "{17503780-FDFD-11D3-A317-000000000000}";

HRESULT ResultOf(LSTATUS aStatus) noexcept {
  if (aStatus == ERROR_SUCCESS) return S_OK;
  return static_cast<HRESULT>(0x80070000u | (static_cast<unsigned>(aStatus) & 0xFFFF));
}

std::string ModulePath() {
  std::array<char, 4096> path{};
  const DWORD length = GetModuleFileNameA(ModuleInstance(), path.data(), static_cast<DWORD>(path.size()));
  return length < path.size() ? std::string(path.data(), length) : std::string();
}

std::string TextOf(const GUID& aId) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(aId.Data1), aId.Data2, aId.Data3, aId.Data4[0], aId.Data4[1],
                aId.Data4[2], aId.Data4[3], aId.Data4[4], aId.Data4[5], aId.Data4[6], aId.Data4[7]);
  return text.data();
}

/// Writes text values under HKEY_CLASSES_ROOT and remembers the first failure.
class Writer {
 public:
  void Set(const std::string& aKey, const std::string& aText, const char* aName = nullptr) {
    if (m_iStatus != ERROR_SUCCESS) return;
    m_iStatus = RegSetKeyValueA(HKEY_CLASSES_ROOT, aKey.c_str(), aName, REG_SZ, aText.c_str(),
                                static_cast<DWORD>(aText.size() + 1));
  }

  void Remove(const std::string& aKey) {
    if (m_iStatus != ERROR_SUCCESS) return;
    const LSTATUS status = RegDeleteTreeA(HKEY_CLASSES_ROOT, aKey.c_str());
    if (status != ERROR_FILE_NOT_FOUND) m_iStatus = status;
  }

  LSTATUS Status() const noexcept { return m_iStatus; }

 private:
  LSTATUS m_iStatus = ERROR_SUCCESS;
};

LSTATUS RegisterClass(const CatalogueEntry& aClass, const std::string& aModule) {
  const std::string classId = TextOf(*aClass.m_pClassId),
                    description = std::string(aClass.m_szName) + " Class";
  const std::string current = std::string("Gl.") + aClass.m_szName, versioned = current + ".1";
  const std::string key = "CLSID\\" + classId;
  Writer writer;
  writer.Set(versioned, description);
  writer.Set(versioned + "\\CLSID", classId);
  writer.Set(current, description);
  writer.Set(current + "\\CLSID", classId);
  writer.Set(current + "\\CurVer", versioned);
  writer.Remove(key);  // replaced whole
  writer.Set(key, description);
  writer.Set(key + "\\ProgID", versioned);
  writer.Set(key + "\\VersionIndependentProgID", current);
  writer.Set(key + "\\InprocServer32", aModule);
  writer.Set(key + "\\InprocServer32", "Both", "ThreadingModel");
  writer.Set(key + "\\TypeLib", kTypeLib);
  return writer.Status();
}

LSTATUS UnregisterClass(const CatalogueEntry& aClass) {
  const std::string current = std::string("Gl.") + aClass.m_szName;
  Writer writer;
  writer.Remove(current + ".1");
  writer.Remove(current);
  writer.Remove("CLSID\\" + TextOf(*aClass.m_pClassId));
  return writer.Status();
}

}  // namespace

HRESULT RegisterModule() noexcept {
  try {
    const std::string module = ModulePath();
    if (module.empty()) return E_FAIL;
    for (const CatalogueEntry& entry : Catalogue()) {
      const LSTATUS status = RegisterClass(entry, module);
      if (status != ERROR_SUCCESS) return ResultOf(status);
    }
    return RegisterModuleTypeLib(module.c_str());
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT UnregisterModule() noexcept {
  try {
    for (const CatalogueEntry& entry : Catalogue()) {
      const LSTATUS status = UnregisterClass(entry);
      if (status != ERROR_SUCCESS) return ResultOf(status);
    }
    return UnregisterModuleTypeLib(ModulePath().c_str());
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}
