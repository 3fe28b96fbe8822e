// gllib-register: keys of all classes, entries of other programs, and replacement of the file as a whole. No
// display.

#include <sys/wait.h>

#include "component/IdlClasses.h"
#include "platform/Registry.h"
#include "support/TestRegistry.h"

namespace {

const std::string kTool = GLLIB_REGISTER_FILE;

/// Entries of other programs in the component's format. The name of one key begins like a key of the module.
const std::string kOthers =
    "Windows Registry Editor Version 5.00\r\n"
    "\r\n; kept by "
    "hand\r\n[HKEY_CLASSES_ROOT\\CLSID\\{00000000-1111-2222-3333-444444444444}\\InprocServer32]\r\n"
    "@=\"/opt/other/module.so\"\r\n\"Wide\"=hex(2):41,00,00,00\r\n"
    "\r\n[HKEY_CLASSES_ROOT\\Gl.GLContextual]\r\n@=\"a neighbour by name\"\r\n"
    "\r\n; the end\r\n";

class Register : public testing::Test {
 protected:
  static void UseFolder(const std::filesystem::path& aFolder) {
    setenv("GLLIB_REGISTRY_DIR", aFolder.c_str(), 1);
  }
  void Put(const char* aFile, const std::string& aText) const { m_Registry.Put(aFile, aText); }
  std::string Get(const char* aFile) const { return m_Registry.Get(aFile); }
  /// Returns the names in the folder, to detect a file that was left behind.
  std::string Files() const {
    std::string names;
    for (const auto& file : std::filesystem::directory_iterator(m_Folder))
      names += file.path().filename().string() + ' ';
    return names;
  }

  /// Runs a command. m_Output receives its output. @return its exit status
  int Run(const std::string& aCommand) {
    m_Output.clear();
    FILE* out = popen((aCommand + " 2>&1").c_str(), "r");
    for (char piece[256]; std::fgets(piece, sizeof(piece), out) != nullptr;) m_Output += piece;
    const int status = pclose(out);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  static std::string Value(const std::string& aKey, const char* aName = nullptr) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CLASSES_ROOT, aKey.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return "no key";
    char text[1024] = {};
    DWORD type = 0, size = sizeof(text);
    const LSTATUS status = RegQueryValueExA(key, aName, nullptr, &type, reinterpret_cast<BYTE*>(text), &size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS && type == REG_SZ ? text : "no text";
  }

  const TestRegistry m_Registry;
  const std::filesystem::path& m_Folder = m_Registry.Path();
  std::string m_Output;
};

}  // namespace

TEST_F(Register, RegistersEachClassAndKeepsOtherEntries) {
  const std::string stale = "CLSID\\{1750378D-FDFD-11D3-A317-000000000000}\\Stale";
  Put("machine.reg",
      std::string(kOthers).insert(kOthers.find("\r\n; the end"),
                                  "\r\n[HKEY_CLASSES_ROOT\\" + stale + "]\r\n@=\"of an older module\"\r\n"));
  ASSERT_EQ(Run(kTool), 0) << m_Output;
  const std::string module = std::filesystem::canonical(GLLIB_MODULE_FILE).parent_path() / "libgllib.so.1";
  for (const IdlClass& one : IdlClasses()) {
    for (const auto& [place, text] : RegistryTextsOf(one, module))
      EXPECT_EQ(Value(place.first, place.second.c_str()), text) << place.first << ' ' << place.second;
  }
  EXPECT_EQ(Value(stale), "no key") << "the key of a class is replaced as a whole";
  ASSERT_EQ(Run(kTool + " --remove --user=false"), 0) << m_Output;
  EXPECT_EQ(Get("machine.reg"), kOthers) << "a switch may be given as off";
  EXPECT_EQ(Files(), "machine.reg ");
  EXPECT_EQ(Run(kTool + " --remove"), 0) << "absent classes are not an error";
}

TEST_F(Register, WritesForOneUserThroughALink) {
  Put("elsewhere", kOthers);
  namespace fs = std::filesystem;
  fs::permissions(m_Folder / "elsewhere", fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("elsewhere", m_Folder / "user.reg");
  ASSERT_EQ(Run(kTool + " --user"), 0) << m_Output;
  EXPECT_TRUE(fs::is_symlink(m_Folder / "user.reg"));
  EXPECT_EQ(fs::status(m_Folder / "elsewhere").permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_NE(Get("elsewhere").find("Gl.GLCanvas.1"), std::string::npos);
  EXPECT_FALSE(fs::exists(m_Folder / "machine.reg"));
}

TEST_F(Register, ChecksItsCommandLine) {
  const struct {
    const char* m_szArguments;
    int m_iStatus;
    const char* m_szOutput;
  } cases[] = {
      {" --help", 0, "usage: gllib-register"},
      {" --what", 2, "what"},
      {" --user=what", 2, "what"},
      {" one two", 2, "two"},
      {" ''", 3, "the name of the module is empty"},
      {" /nowhere/libgllib.so", 3, "/nowhere/libgllib.so"},
      {" libm.so.6", 3, "does not export DllRegisterServer"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(Run(kTool + one.m_szArguments), one.m_iStatus) << one.m_szArguments;
    EXPECT_NE(m_Output.find(one.m_szOutput), std::string::npos) << m_Output;
  }
  EXPECT_EQ(Files(), "");
}
