// RegistryFile: one registry file in the registry-script format, as keys with their values. Lines of others
// are written back as they stood, comments before what they precede. Used by one thread at a time.

#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/Registry.h"

/// One value: its type and its bytes; text with its terminating zero.
struct RegistryValue {
  DWORD m_dwType = REG_SZ;
  std::vector<BYTE> m_vData;
  std::string m_szLine;   ///< the line as it stood, written back while the value isn't set anew
  std::string m_szAbove;  ///< comments before it
};

/// Names compare without regard to case.
struct LessWithoutCase {
  bool operator()(const std::string& a, const std::string& b) const noexcept;
};

struct RegistryKey {
  std::string m_szName;   ///< the full path, as it is written
  std::string m_szAbove;  ///< comments before it
  std::map<std::string, RegistryValue, LessWithoutCase> m_Values;
};

class RegistryFile {
 public:
  /// Reads a file; one that isn't there is empty. @return ERROR_BADDB for one that is no registry script
  LSTATUS Load(const std::string& aPath);
  /// Replaces the file whole, by way of one beside it; a link to it stays one, and who may read it may go on
  /// to.
  /// @return what hindered it, the old file then stands
  LSTATUS Save(const std::string& aPath) const;
  /// Reads the text of a file. @return false for text that is no registry script
  bool Parse(const std::string& aText);

  /// All of it, as it is written.
  std::string Text() const;

  RegistryKey* Find(const std::string& aPath);
  RegistryKey& Make(const std::string& aPath);
  /// Removes a key and all below it. @return false when there is none
  bool Remove(const std::string& aPath);

 private:
  bool ParseValue(const std::string& aLine, RegistryKey& aKey, std::string aAbove);

  std::map<std::string, RegistryKey, LessWithoutCase> m_Keys;
  std::string m_szBelow;  // comments behind everything
};
