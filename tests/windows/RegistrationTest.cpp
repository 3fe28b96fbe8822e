// What regsvr32 entered: the registry against the module's own scripts and the published catalogue, and the
// type library in the module's file against the headers.

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "component/HeaderDeclarations.h"
#include "component/PublishedIdentifiers.h"
#include "windows/Host.h"

namespace {

/// Texts by their key below HKEY_CLASSES_ROOT and the value's name, empty for the default one.
using Entries = std::map<std::pair<std::string, std::string>, std::string>;

std::string TextValue(const std::string& aKey, const char* aName = nullptr) {
  char text[1024] = {};
  DWORD size = sizeof(text);
  return RegGetValueA(HKEY_CLASSES_ROOT, aKey.c_str(), aName, RRF_RT_REG_SZ, nullptr, text, &size) ==
                 ERROR_SUCCESS
             ? text
             : "";
}

std::string ModulePath() {
  return TextValue("CLSID\\{" + std::string(kPublishedClasses.front().m_szId) + "}\\InprocServer32");
}

/// All values of a key and of those below it.
void ReadKey(const std::string& aKey, Entries& aInto) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_CLASSES_ROOT, aKey.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  char name[256];
  for (DWORD i = 0, size = sizeof(name);
       RegEnumValueA(key, i, name, &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
       ++i, size = sizeof(name))
    aInto[{aKey, name}] = TextValue(aKey, name);
  for (DWORD i = 0; RegEnumKeyA(key, i, name, sizeof(name)) == ERROR_SUCCESS; ++i)
    ReadKey(aKey + "\\" + name, aInto);
  RegCloseKey(key);
}

/// The entries that a registry script makes: keys with their texts, nested by braces, below HKCR.
class Script {
 public:
  Script(std::string aText, std::string aModule) : m_sText(std::move(aText)), m_sModule(std::move(aModule)) {
    EXPECT_EQ(Word(), "HKCR");
    EXPECT_EQ(Word(), "{");
    ReadKeys("");
    EXPECT_EQ(Word(), "") << "nothing follows";
  }
  const Entries& Made() const { return m_Entries; }

 private:
  static bool IsBlank(char aChar) { return std::isspace(static_cast<unsigned char>(aChar)) != 0; }

  /// The next word, brace or sign; a quoted text comes without its quotes; empty at the end.
  std::string Word() {
    while (m_uAt < m_sText.size() && IsBlank(m_sText[m_uAt])) ++m_uAt;
    std::size_t end = m_uAt;
    if (end < m_sText.size() && m_sText[end] == '\'') {
      end = m_sText.find('\'', m_uAt + 1);
      const std::string text = m_sText.substr(m_uAt + 1, end - m_uAt - 1);
      m_uAt = end + 1;
      return text;
    }
    while (end < m_sText.size() && !IsBlank(m_sText[end])) ++end;
    return m_sText.substr(std::exchange(m_uAt, end), end - m_uAt);
  }

  /// The text behind "= s", with the module's path in its place.
  std::string Text() {
    EXPECT_EQ(Word(), "=");
    EXPECT_EQ(Word(), "s");
    const std::string text = Word();
    return text == "%MODULE%" ? m_sModule : text;
  }

  void ReadKeys(const std::string& aAbove) {
    std::string key;
    for (std::string word = Word(); !word.empty() && word != "}"; word = Word()) {
      if (word == "{") {
        ReadKeys(key + "\\");
      } else if (word == "NoRemove") {
        key = aAbove + Word();  // and nothing of its own
      } else if (word == "val") {
        const std::string name = Word();
        m_Entries[{aAbove.substr(0, aAbove.size() - 1), name}] = Text();
      } else {
        key = aAbove + (word == "ForceRemove" ? Word() : word);
        m_Entries[{key, ""}] = Text();
      }
    }
  }

  const std::string m_sText, m_sModule;
  std::size_t m_uAt = 0;
  Entries m_Entries;
};

std::string ScriptResource(HMODULE aModule, int aNumber) {
  const HRSRC found = FindResourceExA(aModule, "REGISTRY", MAKEINTRESOURCEA(aNumber),
                                      MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US));
  if (found == nullptr) return {};
  const auto* text = static_cast<const char*>(LockResource(LoadResource(aModule, found)));
  return {text, SizeofResource(aModule, found)};
}

/// A text that the caller owns, as UTF-8.
std::string Utf8(BSTR aOwned) {
  GLString text;
  *text.Put() = aOwned;
  return text.Utf8();
}

/// A type as the headers write it.
std::string TextOf(const TYPEDESC& aType, ITypeInfo& aInfo) {
  static const std::map<VARTYPE, std::string> kNames = {
      {VT_I4, "long"},           {VT_INT, "int"},           {VT_UI4, "unsigned long"},
      {VT_UINT, "unsigned int"}, {VT_UI1, "unsigned char"}, {VT_UI2, "unsigned short"},
      {VT_I2, "short"},          {VT_R4, "float"},          {VT_R8, "double"},
      {VT_BSTR, "BSTR"},         {VT_UNKNOWN, "IUnknown*"}, {VT_UI8, "ULONG_PTR"}};
  if (aType.vt == VT_PTR) {
    const std::string pointed = TextOf(*aType.lptdesc, aInfo);
    return pointed == "IUnknown" ? "IUnknown*" : pointed + "*";
  }
  if (aType.vt == VT_CARRAY) return TextOf(aType.lpadesc->tdescElem, aInfo) + "*";
  if (aType.vt == VT_USERDEFINED) {
    GLPtr<ITypeInfo> named;
    BSTR name = nullptr;
    aInfo.GetRefTypeInfo(aType.hreftype, named.Put());
    named->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
    return Utf8(name);
  }
  const auto found = kNames.find(aType.vt);
  return found != kNames.end() ? found->second : "type " + std::to_string(aType.vt);
}

/// The operations of an interface behind IUnknown's three, as ReadInterfaces gives them.
void ReadInterface(ITypeInfo& aInfo, UINT aOperations, Declarations& aInto) {
  BSTR name = nullptr;
  aInfo.GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
  std::vector<std::string>& lines = aInto[Utf8(name)];
  for (UINT i = 0; i < aOperations; ++i) {
    FUNCDESC* function = nullptr;
    ASSERT_EQ(aInfo.GetFuncDesc(i, &function), S_OK);
    EXPECT_EQ(function->oVft, static_cast<SHORT>((3 + i) * sizeof(void*)));
    std::vector<BSTR> names(static_cast<std::size_t>(function->cParams) + 1);
    UINT count = 0;
    aInfo.GetNames(function->memid, names.data(), static_cast<UINT>(names.size()), &count);
    const char* prefix = function->invkind == INVOKE_PROPERTYGET   ? "get_"
                         : function->invkind == INVOKE_PROPERTYPUT ? "put_"
                                                                   : "";
    lines.push_back(prefix + Utf8(names[0]) + "()");
    for (SHORT p = 0; p < function->cParams; ++p) {
      // What a property is set to has no name of its own there.
      const std::string argument = Utf8(names[static_cast<std::size_t>(p) + 1]);
      lines.push_back(TextOf(function->lprgelemdescParam[p].tdesc, aInfo) + ' ' +
                      (function->invkind == INVOKE_PROPERTYPUT ? "newVal" : argument));
    }
    aInfo.ReleaseFuncDesc(function);
  }
}

}  // namespace

TEST(Registration, IsWhatTheScriptsOfTheModuleSay) {
  const std::string path = ModulePath();
  const HMODULE module = LoadLibraryExA(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  ASSERT_NE(module, nullptr) << path;
  constexpr int kScripts[] = {101, 102, 103, 104, 105, 106, 107, 113, 115, 116, 117, 118, 119, 121};
  ASSERT_EQ(std::size(kScripts), kPublishedClasses.size());
  for (std::size_t i = 0; i < kPublishedClasses.size(); ++i) {
    const std::string name = kPublishedClasses[i].m_szName, current = "Gl." + name;
    const std::string key = "CLSID\\{" + std::string(kPublishedClasses[i].m_szId) + "}";
    SCOPED_TRACE(name);
    Entries registry;
    for (const std::string& top : {current, current + ".1", key}) ReadKey(top, registry);
    EXPECT_EQ(Script(ScriptResource(module, kScripts[i]), path).Made(), registry);
    EXPECT_EQ(registry.size(), 11u);
    EXPECT_EQ(TextValue(key + "\\ProgID"), current + ".1");
    EXPECT_EQ(TextValue(key + "\\InprocServer32", "ThreadingModel"), "Both");
    EXPECT_EQ(TextValue(current + "\\CurVer"), current + ".1");
    EXPECT_EQ(TextValue(current + ".1\\CLSID"), key.substr(6));
  }
  FreeLibrary(module);
}

TEST(TypeLibrary, InTheModulesFileHasTheOperationsOfTheHeadersInSlotOrder) {
  const Apartment apartment;
  GLPtr<ITypeLib> library;
  ASSERT_EQ(LoadTypeLib(std::filesystem::path(ModulePath()).c_str(), library.Put()), S_OK);
  Declarations found;
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    TYPEKIND kind{};
    GLPtr<ITypeInfo> info;
    library->GetTypeInfoType(i, &kind);
    if (kind != TKIND_INTERFACE || library->GetTypeInfo(i, info.Put()) != S_OK) continue;
    TYPEATTR* attributes = nullptr;
    info->GetTypeAttr(&attributes);
    ReadInterface(*info, attributes->cFuncs, found);
    info->ReleaseTypeAttr(attributes);
  }
  const Declarations headers = InterfacesOfHeaders();
  EXPECT_EQ(found.size(), 27u);
  for (const auto& [name, lines] : headers) EXPECT_EQ(found[name], lines) << name;
  EXPECT_EQ(found.size(), headers.size());
}
