// RegistryBatch: changes of one program to HKEY_CLASSES_ROOT that belong together. Used by one thread at a
// time; Commit excludes other threads and processes.

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Registry.h"

/// Collects changes and makes them in order. Texts are UTF-8 on Windows, elsewhere the bytes of the file
/// system. Off Windows they are made as one: other programs see all or nothing of them.
class RegistryBatch {
 public:
  /// Sets a text; an empty name is the key's default value.
  void SetText(std::string aKey, std::string aText, std::string aName = {});
  /// Removes a key and all below it, where it exists.
  void Remove(std::string aKey);

  /// @return ERROR_SUCCESS; else what prevented it. Nothing has changed then; on Windows the changes before
  /// that one
  ///         have been made
  LSTATUS Commit() const noexcept;

 private:
  struct Change {
    bool m_bRemove;
    std::string m_sKey, m_sName, m_sText;
  };
  std::vector<Change> m_vChanges;
};

inline void RegistryBatch::SetText(std::string aKey, std::string aText, std::string aName) {
  m_vChanges.push_back({false, std::move(aKey), std::move(aName), std::move(aText)});
}

inline void RegistryBatch::Remove(std::string aKey) { m_vChanges.push_back({true, std::move(aKey), {}, {}}); }
