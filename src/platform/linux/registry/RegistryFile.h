// RegistryFile: one registry file in the registry-script format, as keys with their values. Lines that aren't
// changed are written back as they were, comments before the line that they precede. Used by one thread at a
// time.

#pragma once

#include <gllib/GLNames.h>
#include <gllib/GLRegistryFile.h>

#include <map>
#include <string>
#include <string_view>

#include "platform/Registry.h"

/// One value, and how it is written.
struct RegistryValue : GLRegistration::Value {
  std::string m_szLine;   ///< its line in the file
  std::string m_szAbove;  ///< comments before it
};

struct RegistryKey {
  std::string m_szName;   ///< the full path, as it is written
  std::string m_szAbove;  ///< comments before it
  std::map<std::string, RegistryValue, GLNames::Less> m_Values;
};

class RegistryFile {
 public:
  /// Reads a file; an absent one is empty.
  /// @return ERROR_SUCCESS; ERROR_ACCESS_DENIED; ERROR_READ_FAULT when the file can't be read to its end;
  ///         ERROR_BADDB for a file that isn't a registry script
  LSTATUS Load(const std::string& aPath);
  /// Replaces the file; see ReplaceFile.
  LSTATUS Save(const std::string& aPath) const;
  /// Reads the text of a file. @return false for text that isn't a registry script
  bool Parse(std::string_view aText);

  /// The text of the file.
  std::string Text() const;

  RegistryKey* Find(const std::string& aPath);
  RegistryKey& Make(const std::string& aPath);
  void SetText(const std::string& aPath, const std::string& aName, const std::string& aText);
  /// Removes a key and all below it. @return false when there is none
  bool Remove(const std::string& aPath);

 private:
  class Reader;

  std::map<std::string, RegistryKey, GLNames::Less> m_Keys;
  std::string m_szBelow;  // comments behind everything
};
