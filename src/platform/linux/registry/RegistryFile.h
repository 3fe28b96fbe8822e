// RegistryFile: one registry file in the registry-script format, as keys with values. Unchanged lines are
// written back as they were read, comments before the line that they precede. One thread at a time.

#pragma once

#include <gllib/GLNames.h>
#include <gllib/GLRegistryFile.h>

#include <map>
#include <string>
#include <string_view>

#include "platform/Registry.h"

/// One value, and its text in the file.
struct RegistryValue : GLRegistration::Value {
  std::string m_szLine;   ///< its line in the file
  std::string m_szAbove;  ///< comments before it
};

struct RegistryKey {
  std::string m_szName;   ///< full path, as spelled in the file
  std::string m_szAbove;  ///< comments before it
  std::map<std::string, RegistryValue, GLNames::Less> m_Values;
};

class RegistryFile {
 public:
  /// Reads a file. An absent file counts as empty.
  /// @return ERROR_SUCCESS; ERROR_ACCESS_DENIED; ERROR_READ_FAULT if the file cannot be read completely;
  ///         ERROR_BADDB if it is not a registry script
  LSTATUS Load(const std::string& aPath);
  /// Replaces the file; see ReplaceFile.
  LSTATUS Save(const std::string& aPath) const;
  /// Parses the text of a file.
  /// @return false if it is not a registry script
  bool Parse(std::string_view aText);

  /// Returns the text of the file.
  std::string Text() const;

  RegistryKey* Find(const std::string& aPath);
  RegistryKey& Make(const std::string& aPath);
  void SetText(const std::string& aPath, const std::string& aName, const std::string& aText);
  /// Removes a key and its subkeys.
  /// @return false if it does not exist
  bool Remove(const std::string& aPath);

 private:
  class Reader;

  std::map<std::string, RegistryKey, GLNames::Less> m_Keys;
  std::string m_szBelow;  // comments after the last line
};
