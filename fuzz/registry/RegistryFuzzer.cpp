// Fuzz target for the registry file reader. An accepted file must read the same after it is written. A new
// key must exist until it is removed. GLCreateObjectByProgID must read the same texts as the module. One
// thread.

#include <gllib/GLByProgID.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/registry/RegistryFile.h"

namespace {

void Expect(bool aTrue) {
  if (!aTrue) std::abort();
}

/// Collects the names of all keys.
struct KeyNames {
  std::vector<std::string> m_vNames;

  void Key(std::string_view aName, const std::string&) { m_vNames.emplace_back(aName); }
  void Entry(const std::string&, const GLRegistration::Value&, std::string_view, const std::string&) {}
  void End(const std::string&) {}
};

/// Compares the class texts that a host reads with the default values that the module reads.
void CompareTexts(std::string_view aText, RegistryFile& aFile) {
  GLRegistration::ClassTexts texts;
  KeyNames keys;
  Expect(GLRegistration::ReadScript(aText, texts) && GLRegistration::ReadScript(aText, keys));
  constexpr std::string_view kRoot = "HKEY_CLASSES_ROOT\\";
  for (const std::string& name : keys.m_vNames) {
    const RegistryKey* key = aFile.Find(name);
    Expect(key != nullptr);
    if (!GLNames::StartsWith(name, kRoot)) continue;
    const std::string* text = texts.Find(name.substr(kRoot.size()));
    const auto value = key->m_Values.find("");
    const bool isText = value != key->m_Values.end() && value->second.m_dwType == REG_SZ;
    Expect((text != nullptr) == isText);
    if (!isText) continue;
    Expect(*text == reinterpret_cast<const char*>(value->second.m_vData.data()));
    GLRegistration::ParseClassId(*text);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* aData, std::size_t aSize) {
  const std::string_view text(reinterpret_cast<const char*>(aData), aSize);
  RegistryFile file;
  if (!file.Parse(text)) return 0;
  CompareTexts(text, file);
  const std::string once = file.Text();
  RegistryFile again;
  Expect(again.Parse(once) && again.Text() == once);

  const std::string key = "HKEY_CURRENT_USER\\Software\\Probe";
  file.SetText(key + "\\Below", "name", "a \"text\" in C:\\");
  RegistryFile more;
  Expect(more.Parse(file.Text()) && more.Find(key) != nullptr);
  Expect(more.Remove(key) && more.Find(key + "\\Below") == nullptr);
  return 0;
}
