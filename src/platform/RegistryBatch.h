// RegistryBatch: a set of changes to HKEY_CLASSES_ROOT. Used by one thread at a time. Commit excludes other
// threads and processes.

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Registry.h"

/// Collects changes and makes them in order. Texts are UTF-8 on Windows, elsewhere the bytes of the file
/// system. Off Windows the changes are atomic: other programs see all of them or none.
class RegistryBatch {
 public:
  /// Sets a text. An empty name sets the key's default value.
  void SetText(std::string aKey, std::string aText, std::string aName = {});
  /// Removes a key and its subkeys, if it exists.
  void Remove(std::string aKey);

  /// Makes the changes.
  /// @return ERROR_SUCCESS, else the first error. After an error nothing is changed; on Windows the changes
  ///         before the failed one remain.
  LSTATUS Commit() const noexcept;

 private:
  struct Change {
    enum class Kind { kSetText, kRemove } m_Kind;
    std::string m_sKey, m_sName, m_sText;
  };
  std::vector<Change> m_vChanges;
};

inline void RegistryBatch::SetText(std::string aKey, std::string aText, std::string aName) {
  m_vChanges.push_back({Change::Kind::kSetText, std::move(aKey), std::move(aName), std::move(aText)});
}

inline void RegistryBatch::Remove(std::string aKey) {
  m_vChanges.push_back({Change::Kind::kRemove, std::move(aKey), {}, {}});
}
