// The registry files: what a registry editor writes is read, what isn't ours stays, a broken file breaks
// nothing.

#include "platform/Registry.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "support/TestRegistry.h"

namespace {

constexpr char kHeader[] = "Windows Registry Editor Version 5.00\r\n";

class Registry : public testing::Test {
 protected:
  ~Registry() override { unsetenv("GLLIB_REGISTRY_USER"); }

  void Put(const std::string& aText) const { m_Folder.Put("machine.reg", aText); }
  std::string Get() const { return m_Folder.Get("machine.reg"); }

  static LSTATUS Open(HKEY aRoot, const char* aKey) {
    HKEY key = nullptr;
    const LSTATUS status = RegOpenKeyExA(aRoot, aKey, 0, KEY_READ, &key);
    RegCloseKey(key);
    return status;
  }
  /// A value's type and bytes, as text.
  static std::string Query(HKEY aRoot, const char* aKey, const char* aName) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(aRoot, aKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return "no key";
    BYTE data[64] = {};
    DWORD type = 0, size = sizeof(data);
    const LSTATUS status = RegQueryValueExA(key, aName, nullptr, &type, data, &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS) return "no value";
    return std::to_string(type) + ":" + std::string(data, data + size);
  }
  static LSTATUS Set(HKEY aRoot, const char* aKey, const char* aName, const std::string& aText) {
    return RegSetKeyValueA(aRoot, aKey, aName, REG_SZ, aText.c_str(), static_cast<DWORD>(aText.size() + 1));
  }

  const TestRegistry m_Folder;
};

std::string Text(const std::string& aText) { return "1:" + aText + '\0'; }

}  // namespace

TEST_F(Registry, ReadsWhatARegistryEditorWrites) {
  Put(std::string(kHeader) +
      "\r\n; kept in C:\\\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Maker\\GL]\r\n"
      "\"Switch\"=dword:0000000A  \r\n@=\"the \\\"C:\\\\\\\" default\"\r\n"
      "\"Bytes\"=hex:41,42,\\\r\n  43\r\n\"Wide\"=hex(2):41,00,00,00\r\n");
  const char key[] = "software\\MAKER\\gl";
  EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "SWITCH"), std::string("4:\n\0\0\0", 6));
  EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, nullptr), Text("the \"C:\\\" default"));
  EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "Bytes"), "3:ABC");
  EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "Other"), "no value");
  EXPECT_EQ(Open(HKEY_LOCAL_MACHINE, "SOFTWARE\\Maker"), ERROR_SUCCESS) << "above a key there is one";
  EXPECT_EQ(Open(HKEY_LOCAL_MACHINE, "SOFTWARE\\Mak"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Open(HKEY_CURRENT_USER, "SOFTWARE\\Maker"), ERROR_FILE_NOT_FOUND) << "no file, no keys";
}

TEST_F(Registry, RefusesABrokenFileAndLeavesItAlone) {
  const std::string key = std::string(kHeader) + "[HKEY_CLASSES_ROOT\\A]\r\n";
  for (const std::string& text :
       {std::string("Windows Regis"), std::string("\x7F\x45LF"),
        std::string(kHeader) + "\"a\"=\"before a key\"", std::string(kHeader) + "[HKEY_CLASSES", key + "\"a",
        key + "\"a\"=", key + "\"a\"=\"b", key + "\"a\"=\"b\\", key + "\"a\"=dword:",
        key + "\"a\"=dword:123456789", key + "\"a\"=hex:41,4x", key + "\"a\"=hex:41,\\"}) {
    SCOPED_TRACE(text);
    Put(text);
    const bool readable = text == key + "\"a\"=";  // an unknown type with no data is somebody else's
    EXPECT_EQ(Open(HKEY_CLASSES_ROOT, "A"), readable ? ERROR_SUCCESS : ERROR_BADDB);
    if (readable) continue;
    EXPECT_EQ(Set(HKEY_CLASSES_ROOT, "B", "x", "y"), ERROR_BADDB);
    EXPECT_EQ(Get(), text);
  }
}

TEST_F(Registry, KeepsTheLinesOfOthers) {
  Put(std::string(kHeader) +
      "\r\n; about B\r\n[HKEY_CLASSES_ROOT\\B]\r\n; about x\r\n\"x\"=\"old\"\r\n"
      "\"y\"=hex(7):00,00\r\n\r\n; the end\r\n");
  ASSERT_EQ(Set(HKEY_CLASSES_ROOT, "b", "X", "C:\\\"new\""), ERROR_SUCCESS);
  EXPECT_EQ(Set(HKEY_CLASSES_ROOT, "B", "x", "two\nlines"), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Get(),
            std::string(kHeader) +
                "\r\n; about B\r\n[HKEY_CLASSES_ROOT\\B]\r\n; about x\r\n\"x\"=\"C:\\\\\\\"new\\\"\"\r\n"
                "\"y\"=hex(7):00,00\r\n\r\n; the end\r\n");
}

TEST_F(Registry, TakesTheUsersClassesBeforeTheMachines) {
  ASSERT_EQ(Set(HKEY_CLASSES_ROOT, "Gl.A", nullptr, "machine's"), ERROR_SUCCESS);
  ASSERT_EQ(Set(HKEY_CLASSES_ROOT, "Gl.AB\\CLSID", nullptr, "neighbour"), ERROR_SUCCESS);
  setenv("GLLIB_REGISTRY_USER", "1", 1);
  ASSERT_EQ(Set(HKEY_CLASSES_ROOT, "Gl.A", nullptr, "user's"), ERROR_SUCCESS);
  EXPECT_EQ(Query(HKEY_CLASSES_ROOT, "Gl.A", ""), Text("user's"));
  EXPECT_EQ(RegDeleteTreeA(HKEY_CLASSES_ROOT, "gl.a"), ERROR_SUCCESS);
  EXPECT_EQ(Query(HKEY_CLASSES_ROOT, "Gl.A", ""), Text("machine's"));
  unsetenv("GLLIB_REGISTRY_USER");
  EXPECT_EQ(RegDeleteTreeA(HKEY_CLASSES_ROOT, "Gl.A"), ERROR_SUCCESS);
  EXPECT_EQ(Open(HKEY_CLASSES_ROOT, "Gl.A"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Query(HKEY_CLASSES_ROOT, "Gl.AB\\CLSID", nullptr), Text("neighbour"));
}

TEST_F(Registry, TellsTheRoomThatAValueNeeds) {
  ASSERT_EQ(Set(HKEY_CLASSES_ROOT, "A", "x", "four"), ERROR_SUCCESS);
  HKEY key = nullptr;
  ASSERT_EQ(RegOpenKeyExA(HKEY_CLASSES_ROOT, "A", 0, KEY_READ, &key), ERROR_SUCCESS);
  BYTE small[2] = {7, 7};
  DWORD size = sizeof(small);
  EXPECT_EQ(RegQueryValueExA(key, "x", nullptr, nullptr, small, &size), ERROR_MORE_DATA);
  EXPECT_EQ(size, 5u);
  EXPECT_EQ(small[0], 7);
  RegCloseKey(key);
}

TEST_F(Registry, LosesNothingToAnotherProcess) {
  const auto write = [](const std::string& name) {
    for (int i = 0; i < 40; ++i) Set(HKEY_CLASSES_ROOT, (name + std::to_string(i)).c_str(), "x", "y");
  };
  const pid_t other = fork();
  if (other == 0) {
    write("other");
    _exit(0);
  }
  write("own");
  waitpid(other, nullptr, 0);
  for (const std::string name : {"own", "other"}) {
    for (int i = 0; i < 40; ++i)
      EXPECT_EQ(Open(HKEY_CLASSES_ROOT, (name + std::to_string(i)).c_str()), ERROR_SUCCESS);
  }
}
