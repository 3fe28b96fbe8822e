// RegistryFile: keys and values of the registry-script format, and their output. One thread at a time.

#include "platform/linux/registry/RegistryFile.h"

#include <utility>

#include "platform/Log.h"
#include "platform/linux/registry/FileReplacement.h"

namespace {

std::string Quoted(const std::string& aText) {
  std::string result = "\"";
  for (const char c : aText) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result + '"';
}

}  // namespace

/// Stores the keys and values that ReadScript finds.
class RegistryFile::Reader {
 public:
  explicit Reader(RegistryFile& aFile) noexcept : m_File(aFile) {}

  void Key(std::string_view aName, const std::string& aAbove) {
    m_pKey = &m_File.Make(std::string(aName));
    m_pKey->m_szAbove += aAbove;
  }
  void Entry(const std::string& aName, GLRegistration::Value&& aValue, std::string_view aLine,
             const std::string& aAbove) {
    RegistryValue& value = m_pKey->m_Values[aName];
    static_cast<GLRegistration::Value&>(value) = std::move(aValue);
    value.m_szLine = aLine;
    value.m_szAbove += aAbove;
  }
  void End(std::string&& aBelow) { m_File.m_szBelow = std::move(aBelow); }

 private:
  RegistryFile& m_File;
  RegistryKey* m_pKey = nullptr;
};

LSTATUS RegistryFile::Load(const std::string& aPath) {
  std::string text;
  switch (GLRegistration::ReadFile(aPath, text)) {
    case GLRegistration::FileState::kAbsent:
      return ERROR_SUCCESS;
    case GLRegistration::FileState::kDenied:
      return ERROR_ACCESS_DENIED;
    case GLRegistration::FileState::kFailed:
      return ERROR_READ_FAULT;
    case GLRegistration::FileState::kDamaged:
      return ERROR_BADDB;
    case GLRegistration::FileState::kRead:
      break;
  }
  if (text.empty() || Parse(text)) return ERROR_SUCCESS;
  LogWarning("the registry file %s is damaged: it is ignored", aPath.c_str());
  return ERROR_BADDB;
}

LSTATUS RegistryFile::Save(const std::string& aPath) const { return ReplaceFile(aPath, Text()); }

bool RegistryFile::Parse(std::string_view aText) { return GLRegistration::ReadScript(aText, Reader(*this)); }

std::string RegistryFile::Text() const {
  std::string text = std::string(GLRegistration::kScriptHeader) + "\r\n";
  for (const auto& [path, key] : m_Keys) {
    text += "\r\n" + key.m_szAbove + '[' + key.m_szName + "]\r\n";
    for (const auto& [name, value] : key.m_Values) text += value.m_szAbove + value.m_szLine + "\r\n";
  }
  if (!m_szBelow.empty()) text += "\r\n" + m_szBelow;
  return text;
}

RegistryKey* RegistryFile::Find(const std::string& aPath) {
  const auto found = m_Keys.find(aPath);
  if (found != m_Keys.end()) return &found->second;
  // A key exists if a subkey exists.
  const std::string below = aPath + "\\";
  const auto child = m_Keys.lower_bound(below);
  return child != m_Keys.end() && GLNames::StartsWith(child->first, below) ? &Make(aPath) : nullptr;
}

RegistryKey& RegistryFile::Make(const std::string& aPath) {
  RegistryKey& key = m_Keys[aPath];
  if (key.m_szName.empty()) key.m_szName = aPath;
  return key;
}

void RegistryFile::SetText(const std::string& aPath, const std::string& aName, const std::string& aText) {
  // keeps the spelling of an existing name
  auto& [name, value] = *Make(aPath).m_Values.try_emplace(aName).first;
  value.m_dwType = REG_SZ;
  value.m_vData.assign(aText.c_str(), aText.c_str() + aText.size() + 1);
  value.m_szLine = (name.empty() ? "@" : Quoted(name)) + "=" + Quoted(aText);
}

bool RegistryFile::Remove(const std::string& aPath) {
  const std::string below = aPath + "\\";
  return std::erase_if(m_Keys, [&](const auto& aEntry) {
           return GLNames::Equal(aEntry.first, aPath) || GLNames::StartsWith(aEntry.first, below);
         }) != 0;
}
