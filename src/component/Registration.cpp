// Registration: the module's registry keys under HKEY_CLASSES_ROOT. One change of the registry enters or
// removes all classes. Any thread.

#include "component/Registration.h"

#include <array>
#include <cstdio>
#include <string>

#include "component/Catalogue.h"
#include "platform/ModuleFile.h"
#include "platform/RegistryBatch.h"

namespace {

constexpr char kTypeLib[] = "{17503780-FDFD-11D3-A317-000000000000}";

HRESULT ResultOf(LSTATUS aStatus) noexcept {
  return static_cast<HRESULT>(0x80070000u | (static_cast<unsigned>(aStatus) & 0xFFFF));
}

std::string TextOf(const GUID& aId) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(aId.Data1), aId.Data2, aId.Data3, aId.Data4[0], aId.Data4[1],
                aId.Data4[2], aId.Data4[3], aId.Data4[4], aId.Data4[5], aId.Data4[6], aId.Data4[7]);
  return text.data();
}

/// Adds the changes that enter one class. They replace the whole key of the class.
void Enter(RegistryBatch& aBatch, const CatalogueEntry& aClass, const std::string& aModule) {
  const std::string classId = TextOf(*aClass.m_pClassId),
                    description = std::string(aClass.m_szName) + " Class";
  const std::string current = std::string("Gl.") + aClass.m_szName, versioned = current + ".1";
  const std::string key = "CLSID\\" + classId;
  aBatch.SetText(versioned, description);
  aBatch.SetText(versioned + "\\CLSID", classId);
  aBatch.SetText(current, description);
  aBatch.SetText(current + "\\CLSID", classId);
  aBatch.SetText(current + "\\CurVer", versioned);
  aBatch.Remove(key);
  aBatch.SetText(key, description);
  aBatch.SetText(key + "\\ProgID", versioned);
  aBatch.SetText(key + "\\VersionIndependentProgID", current);
  aBatch.SetText(key + "\\InprocServer32", aModule);
  aBatch.SetText(key + "\\InprocServer32", "Both", "ThreadingModel");
  aBatch.SetText(key + "\\TypeLib", kTypeLib);
}

void TakeOut(RegistryBatch& aBatch, const CatalogueEntry& aClass) {
  const std::string current = std::string("Gl.") + aClass.m_szName;
  aBatch.Remove(current + ".1");
  aBatch.Remove(current);
  aBatch.Remove("CLSID\\" + TextOf(*aClass.m_pClassId));
}

}  // namespace

HRESULT RegisterModule() noexcept try {
  const std::string module = ModulePath();
  if (module.empty()) return E_FAIL;
  RegistryBatch batch;
  for (const CatalogueEntry& entry : Catalogue()) Enter(batch, entry, module);
  const LSTATUS status = batch.Commit();
  return status == ERROR_SUCCESS ? RegisterModuleTypeLib(module) : ResultOf(status);
} catch (...) {
  return E_OUTOFMEMORY;
}

HRESULT UnregisterModule() noexcept try {
  RegistryBatch batch;
  for (const CatalogueEntry& entry : Catalogue()) TakeOut(batch, entry);
  const LSTATUS status = batch.Commit();
  return status == ERROR_SUCCESS ? UnregisterModuleTypeLib(ModulePath()) : ResultOf(status);
} catch (...) {
  return E_OUTOFMEMORY;
}
