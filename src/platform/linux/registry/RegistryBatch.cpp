// RegistryBatch: applies all changes with one load and one save of the file that holds the classes. One
// thread at a time.

#include "platform/RegistryBatch.h"

#include <cstdlib>
#include <filesystem>

#include "platform/linux/registry/FolderLock.h"
#include "platform/linux/registry/RegistryFile.h"

namespace {

/// Returns the machine's file, or the user's if GLLIB_REGISTRY_USER is set.
std::string ClassesFile() {
  return GLRegistration::Environment("GLLIB_REGISTRY_USER").empty() ? GLRegistration::MachineFile()
                                                                    : GLRegistration::UserFile();
}

/// Returns whether the text fits on one line: a line break would end the line, and a zero would end the text.
bool FitsALine(const std::string& aText) noexcept {
  return aText.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos;
}

}  // namespace

LSTATUS RegistryBatch::Commit() const noexcept try {
  for (const Change& change : m_vChanges) {
    if (!FitsALine(change.m_sKey) || !FitsALine(change.m_sName) || !FitsALine(change.m_sText))
      return ERROR_INVALID_PARAMETER;
  }
  const std::string name = ClassesFile();
  if (name.empty()) return ERROR_ACCESS_DENIED;
  const FolderLock lock(std::filesystem::path(name).parent_path());
  if (lock.Status() != ERROR_SUCCESS) return lock.Status();
  RegistryFile file;
  if (const LSTATUS status = file.Load(name); status != ERROR_SUCCESS) return status;
  const std::string before = file.Text();
  for (const Change& change : m_vChanges) {
    const std::string path = "HKEY_CLASSES_ROOT\\" + change.m_sKey;
    if (change.m_Kind == Change::Kind::kRemove) {
      file.Remove(path);
    } else {
      file.SetText(path, change.m_sName, change.m_sText);
    }
  }
  return file.Text() != before ? file.Save(name) : ERROR_SUCCESS;
} catch (...) {
  return ERROR_WRITE_FAULT;
}
