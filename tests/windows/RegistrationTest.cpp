// The entries that regsvr32 has made in the system's registry. Wine.

#include "component/IdlClasses.h"
#include "windows/Host.h"

namespace {

std::string TextValue(const std::string& aKey, const char* aName = nullptr) {
  char text[1024] = {};
  DWORD size = sizeof(text);
  return RegGetValueA(HKEY_CLASSES_ROOT, aKey.c_str(), aName, RRF_RT_REG_SZ, nullptr, text, &size) ==
                 ERROR_SUCCESS
             ? text
             : "";
}

/// Adds all values of a key and of its subkeys.
void ReadKey(const std::string& aKey, RegistryTexts& aInto) {
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

}  // namespace

TEST(Registration, RegistersEachClass) {
  const std::string module = TextValue("CLSID\\{" + IdlClasses().front().m_sId + "}\\InprocServer32");
  ASSERT_TRUE(std::filesystem::exists(module)) << module;
  for (const IdlClass& one : IdlClasses()) {
    RegistryTexts found;
    for (const std::string& top :
         {"Gl." + one.m_sName, "Gl." + one.m_sName + ".1", "CLSID\\{" + one.m_sId + "}"})
      ReadKey(top, found);
    EXPECT_EQ(found, RegistryTextsOf(one, module)) << one.m_sName;
  }
}
