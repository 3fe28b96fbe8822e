// Reading of machine.reg and user.reg. Each operation reads the files again. Files are replaced as a whole,
// so no lock is needed. Any thread.

#include "platform/Registry.h"

#include <algorithm>
#include <utility>

#include "platform/linux/registry/RegistryFile.h"

struct HKEY__ {
  std::string m_szPath;  // starts with the name of the root
};

namespace {

/// Returns the files that may contain a key, in order of precedence.
std::vector<std::string> FilesOf(const std::string& aPath) {
  if (GLNames::StartsWith(aPath, "HKEY_CURRENT_USER")) return {GLRegistration::UserFile()};
  if (GLNames::StartsWith(aPath, "HKEY_CLASSES_ROOT"))
    return {GLRegistration::UserFile(), GLRegistration::MachineFile()};
  return {GLRegistration::MachineFile()};
}

std::string PathOf(HKEY hKey, const char* szSubKey) {
  std::string path = hKey == HKEY_CLASSES_ROOT    ? "HKEY_CLASSES_ROOT"
                     : hKey == HKEY_CURRENT_USER  ? "HKEY_CURRENT_USER"
                     : hKey == HKEY_LOCAL_MACHINE ? "HKEY_LOCAL_MACHINE"
                                                  : hKey->m_szPath;
  if (szSubKey != nullptr && *szSubKey != '\0') path += std::string("\\") + szSubKey;
  return path;
}

template <class Operation>
LSTATUS Guarded(HKEY hKey, Operation aOperation) noexcept {
  if (hKey == nullptr) return ERROR_INVALID_HANDLE;
  try {
    return aOperation();
  } catch (...) {
    return ERROR_READ_FAULT;
  }
}

LSTATUS CopyOut(const RegistryValue& aValue, DWORD* pType, BYTE* pData, DWORD* pcbData) noexcept {
  const auto size = static_cast<DWORD>(aValue.m_vData.size());
  if (pType != nullptr) *pType = aValue.m_dwType;
  if (pcbData == nullptr) return pData == nullptr ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
  const DWORD room = std::exchange(*pcbData, size);
  if (pData == nullptr) return ERROR_SUCCESS;
  if (room < size) return ERROR_MORE_DATA;
  std::copy(aValue.m_vData.begin(), aValue.m_vData.end(), pData);
  return ERROR_SUCCESS;
}

}  // namespace

LSTATUS RegOpenKeyExA(HKEY hKey, const char* szSubKey, DWORD, REGSAM, HKEY* phkResult) noexcept {
  if (phkResult == nullptr) return ERROR_INVALID_PARAMETER;
  *phkResult = nullptr;
  return Guarded(hKey, [&]() -> LSTATUS {
    const std::string path = PathOf(hKey, szSubKey);
    for (const std::string& name : FilesOf(path)) {
      RegistryFile file;
      const LSTATUS status = file.Load(name);
      if (status != ERROR_SUCCESS) return status;
      if (file.Find(path) == nullptr) continue;
      *phkResult = new HKEY__{path};
      return ERROR_SUCCESS;
    }
    return ERROR_FILE_NOT_FOUND;
  });
}

LSTATUS RegQueryValueExA(HKEY hKey, const char* szValueName, DWORD*, DWORD* pType, BYTE* pData,
                         DWORD* pcbData) noexcept {
  return Guarded(hKey, [&]() -> LSTATUS {
    const std::string path = PathOf(hKey, nullptr);
    for (const std::string& name : FilesOf(path)) {
      RegistryFile file;
      const LSTATUS status = file.Load(name);
      if (status != ERROR_SUCCESS) return status;
      const RegistryKey* key = file.Find(path);
      if (key == nullptr) continue;
      const auto value = key->m_Values.find(szValueName != nullptr ? szValueName : "");
      if (value != key->m_Values.end()) return CopyOut(value->second, pType, pData, pcbData);
    }
    return ERROR_FILE_NOT_FOUND;
  });
}

LSTATUS RegCloseKey(HKEY hKey) noexcept {
  if (hKey == HKEY_CLASSES_ROOT || hKey == HKEY_CURRENT_USER || hKey == HKEY_LOCAL_MACHINE)
    return ERROR_SUCCESS;
  delete hKey;
  return ERROR_SUCCESS;
}
