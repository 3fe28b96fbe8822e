// RegistryBatch on Windows: calls the registry once per change, with Unicode names. One thread at a time.

#include "platform/RegistryBatch.h"

#include "platform/windows/WideText.h"

LSTATUS RegistryBatch::Commit() const noexcept try {
  for (const Change& change : m_vChanges) {
    const std::wstring key = WideText(change.m_sKey);
    LSTATUS status = ERROR_SUCCESS;
    if (change.m_Kind == Change::Kind::kRemove) {
      status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
      if (status == ERROR_FILE_NOT_FOUND) status = ERROR_SUCCESS;
    } else {
      const std::wstring name = WideText(change.m_sName), text = WideText(change.m_sText);
      status = RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name.empty() ? nullptr : name.c_str(), REG_SZ,
                               text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    if (status != ERROR_SUCCESS) return status;
  }
  return ERROR_SUCCESS;
} catch (...) {
  return ERROR_NOT_ENOUGH_MEMORY;
}
