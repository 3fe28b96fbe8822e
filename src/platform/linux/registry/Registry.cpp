// The registry operations over machine.reg and user.reg. Each operation reads its file anew, and one that
// changes it replaces it whole; one lock for all of them, and one on the folder against other processes.
// Any thread.

#include "platform/Registry.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <new>
#include <utility>

#include "platform/linux/registry/RegistryFile.h"

struct HKEY__ {
  std::string m_szPath;  // from the root's name on
};

namespace {

std::mutex g_RegistryLock;

std::string Variable(const char* aName) {
  const char* value = std::getenv(aName);
  return value != nullptr ? value : "";
}

std::string UserFile() {
  if (const std::string folder = Variable("GLLIB_REGISTRY_DIR"); !folder.empty()) return folder + "/user.reg";
  const std::string config = Variable("XDG_CONFIG_HOME");
  return (config.empty() ? Variable("HOME") + "/.config" : config) + "/gllib/user.reg";
}

std::string MachineFile() {
  if (const std::string folder = Variable("GLLIB_REGISTRY_DIR"); !folder.empty())
    return folder + "/machine.reg";
  const std::string folders = Variable("XDG_CONFIG_DIRS");
  return (folders.empty() ? "/etc/xdg" : folders.substr(0, folders.find(':'))) + "/gllib/machine.reg";
}

bool IsUsers(const std::string& aPath) { return aPath.rfind("HKEY_CURRENT_USER", 0) == 0; }
bool IsClasses(const std::string& aPath) { return aPath.rfind("HKEY_CLASSES_ROOT", 0) == 0; }

/// Where a key may be read, the one that counts first.
std::vector<std::string> FilesToRead(const std::string& aPath) {
  if (IsUsers(aPath)) return {UserFile()};
  if (IsClasses(aPath)) return {UserFile(), MachineFile()};
  return {MachineFile()};
}

/// Classes go to the machine's file, or to the user's where GLLIB_REGISTRY_USER asks for it.
std::string FileToWrite(const std::string& aPath) {
  const bool user = IsUsers(aPath) || (IsClasses(aPath) && !Variable("GLLIB_REGISTRY_USER").empty());
  return user ? UserFile() : MachineFile();
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
    const std::scoped_lock lock(g_RegistryLock);
    return aOperation();
  } catch (...) {
    return ERROR_WRITE_FAULT;
  }
}

/// Keeps other processes from changing files in a folder meanwhile, as far as the file system can.
class FolderLock {
 public:
  explicit FolderLock(const std::filesystem::path& aFolder) {
    std::error_code error;
    std::filesystem::create_directories(aFolder, error);
    m_iFolder = open(aFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_iFolder >= 0) flock(m_iFolder, LOCK_EX);
  }
  ~FolderLock() {
    if (m_iFolder >= 0) close(m_iFolder);
  }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int m_iFolder = -1;
};

/// A line break would end the line that a name or a text stands in.
bool FitsALine(const std::string& aText) noexcept { return aText.find_first_of("\r\n") == std::string::npos; }

/// Changes the file that a path is written to, whole or not at all. What makes no difference isn't written.
template <class Change>
LSTATUS ChangeFile(const std::string& aPath, Change aChange) {
  RegistryFile file;
  const std::string name = FileToWrite(aPath);
  const FolderLock lock(std::filesystem::path(name).parent_path());
  LSTATUS status = file.Load(name);
  if (status != ERROR_SUCCESS) return status;
  const std::string before = file.Text();
  status = aChange(file);
  return status == ERROR_SUCCESS && file.Text() != before ? file.Save(name) : status;
}

LSTATUS CopyOut(const RegistryValue& aValue, DWORD* pType, BYTE* pData, DWORD* pcbData) noexcept {
  const DWORD size = static_cast<DWORD>(aValue.m_vData.size());
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
    for (const std::string& name : FilesToRead(path)) {
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
    for (const std::string& name : FilesToRead(path)) {
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

LSTATUS RegSetKeyValueA(HKEY hKey, const char* szSubKey, const char* szValueName, DWORD dwType,
                        const void* pData, DWORD cbData) noexcept {
  return Guarded(hKey, [&] {
    const std::string path = PathOf(hKey, szSubKey), name = szValueName != nullptr ? szValueName : "";
    const auto* first = static_cast<const BYTE*>(pData);
    const std::vector<BYTE> data(first, first + cbData);
    if (!FitsALine(path) || !FitsALine(name) || (dwType == REG_SZ && !FitsALine({data.begin(), data.end()})))
      return ERROR_INVALID_PARAMETER;
    return ChangeFile(path, [&](RegistryFile& file) {
      RegistryValue& value = file.Make(path).m_Values[name];
      value.m_dwType = dwType;
      value.m_vData = data;
      value.m_szLine.clear();
      return ERROR_SUCCESS;
    });
  });
}

LSTATUS RegDeleteTreeA(HKEY hKey, const char* szSubKey) noexcept {
  return Guarded(hKey, [&] {
    const std::string path = PathOf(hKey, szSubKey);
    return ChangeFile(
        path, [&](RegistryFile& file) { return file.Remove(path) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND; });
  });
}

LSTATUS RegCloseKey(HKEY hKey) noexcept {
  if (hKey == HKEY_CLASSES_ROOT || hKey == HKEY_CURRENT_USER || hKey == HKEY_LOCAL_MACHINE)
    return ERROR_SUCCESS;
  delete hKey;
  return ERROR_SUCCESS;
}
