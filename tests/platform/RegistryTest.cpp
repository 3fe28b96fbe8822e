// The registry files: files of registry editors are read, other programs' lines are kept, and damaged files
// are not changed. GLCreateObjectByProgID reads the same values. No display.

#include "platform/Registry.h"

#include <sys/wait.h>
#include <unistd.h>

#include "platform/RegistryBatch.h"
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
  /// Returns a value's type and bytes as text.
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
  static LSTATUS Set(const std::string& aKey, const std::string& aName, const std::string& aText) {
    RegistryBatch batch;
    batch.SetText(aKey, aText, aName);
    return batch.Commit();
  }
  static LSTATUS Remove(const std::string& aKey) {
    RegistryBatch batch;
    batch.Remove(aKey);
    return batch.Commit();
  }

  const TestRegistry m_Folder;
};

std::string Text(const std::string& aText) { return "1:" + aText + '\0'; }

}  // namespace

TEST_F(Registry, ReadsFilesOfARegistryEditor) {
  Put(std::string(kHeader) +
      "\r\n; kept in C:\\\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Maker\\GL]\r\n"
      "\"Switch\"=dword:0000000A  \r\n@=\"the \\\"C:\\\\\\\" default\"\r\n"
      "\"Bytes\"=hex:41,42,\\\r\n  43\r\n\"Wide\"=hex(2):41,00,00,00\r\n");
  const char key[] = "software\\MAKER\\gl";
  EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "SWITCH"), std::string("4:\n\0\0\0", 6));
  EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, nullptr), Text("the \"C:\\\" default"));
  EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "Bytes"), "3:ABC");
  EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "Other"), "no value");
  EXPECT_EQ(Open(HKEY_LOCAL_MACHINE, "SOFTWARE\\Maker"), ERROR_SUCCESS) << "a parent key exists";
  EXPECT_EQ(Open(HKEY_LOCAL_MACHINE, "SOFTWARE\\Mak"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Open(HKEY_CURRENT_USER, "SOFTWARE\\Maker"), ERROR_FILE_NOT_FOUND) << "no file, no keys";
}

TEST_F(Registry, RefusesADamagedFileAndKeepsIt) {
  const std::string key = std::string(kHeader) + "[HKEY_CLASSES_ROOT\\A]\r\n";
  for (const std::string& text :
       {std::string("Windows Regis"), std::string("\x7F\x45LF"),
        std::string(kHeader) + "\"a\"=\"before a key\"", std::string(kHeader) + "[HKEY_CLASSES", key + "\"a",
        key + "\"a\"=", key + "\"a\"=\"b", key + "\"a\"=\"b\\", key + "\"a\"=dword:",
        key + "\"a\"=dword:123456789", key + "\"a\"=hex:41,4x", key + "\"a\"=hex:41,\\"}) {
    SCOPED_TRACE(text);
    Put(text);
    const bool readable = text == key + "\"a\"=";  // an unknown type without data belongs to another program
    EXPECT_EQ(Open(HKEY_CLASSES_ROOT, "A"), readable ? ERROR_SUCCESS : ERROR_BADDB);
    if (readable) continue;
    EXPECT_EQ(Set("B", "x", "y"), ERROR_BADDB);
    EXPECT_EQ(Get(), text);
  }
}

TEST_F(Registry, KeepsLinesOfOtherPrograms) {
  Put(std::string(kHeader) +
      "\r\n; about B\r\n[HKEY_CLASSES_ROOT\\B]\r\n; about x\r\n\"x\"=\"old\"\r\n"
      "\"y\"=hex(7):00,00\r\n\r\n; the end\r\n");
  ASSERT_EQ(Set("b", "X", "C:\\\"new\""), ERROR_SUCCESS);
  EXPECT_EQ(Set("B", "x", "two\nlines"), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Get(),
            std::string(kHeader) +
                "\r\n; about B\r\n[HKEY_CLASSES_ROOT\\B]\r\n; about x\r\n\"x\"=\"C:\\\\\\\"new\\\"\"\r\n"
                "\"y\"=hex(7):00,00\r\n\r\n; the end\r\n");
}

TEST_F(Registry, UserClassesPrecedeThoseOfTheMachine) {
  ASSERT_EQ(Set("Gl.A", "", "machine's"), ERROR_SUCCESS);
  ASSERT_EQ(Set("Gl.AB\\CLSID", "", "neighbour"), ERROR_SUCCESS);
  setenv("GLLIB_REGISTRY_USER", "1", 1);
  ASSERT_EQ(Set("Gl.A", "", "user's"), ERROR_SUCCESS);
  EXPECT_EQ(Query(HKEY_CLASSES_ROOT, "Gl.A", ""), Text("user's"));
  EXPECT_EQ(Remove("gl.a"), ERROR_SUCCESS);
  EXPECT_EQ(Query(HKEY_CLASSES_ROOT, "Gl.A", ""), Text("machine's"));
  unsetenv("GLLIB_REGISTRY_USER");
  EXPECT_EQ(Remove("Gl.A"), ERROR_SUCCESS);
  EXPECT_EQ(Remove("Gl.A"), ERROR_SUCCESS) << "an absent key is not an error";
  EXPECT_EQ(Open(HKEY_CLASSES_ROOT, "Gl.A"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Query(HKEY_CLASSES_ROOT, "Gl.AB\\CLSID", nullptr), Text("neighbour"));
}

TEST_F(Registry, BatchIsVisibleWholeOrNotAtAll) {
  constexpr int kClasses = 14;
  const auto name = [](int i) { return "Gl.Class" + std::to_string(i) + "\\CLSID"; };
  const auto enter = [&](const std::string& text) {
    RegistryBatch batch;
    for (int i = 0; i < kClasses; ++i) {
      batch.Remove(name(i));
      batch.SetText(name(i), text);
    }
    return batch.Commit();
  };
  ASSERT_EQ(enter("first"), ERROR_SUCCESS);
  std::atomic<bool> done{false};
  const std::jthread writer([&] {
    for (int turn = 0; turn < 40; ++turn) EXPECT_EQ(enter("turn " + std::to_string(turn)), ERROR_SUCCESS);
    done = true;
  });
  do {
    GLRegistration::ClassTexts texts;
    ASSERT_TRUE(texts.Load(m_Folder.Path() / "machine.reg"));
    const std::string* first = texts.Find(name(0));
    ASSERT_NE(first, nullptr) << "a class has disappeared";
    for (int i = 1; i < kClasses; ++i) {
      const std::string* text = texts.Find(name(i));
      EXPECT_TRUE(text != nullptr && *text == *first) << i;
    }
  } while (!done);
}

TEST_F(Registry, IgnoresARelativeXdgFolder) {
  unsetenv("GLLIB_REGISTRY_DIR");
  const std::string before = getenv("HOME") != nullptr ? getenv("HOME") : "";
  for (const auto& [home, user, machine, userFile, machineFile] :
       {std::tuple{"/h", "/u", "/m:/n", "/u/gllib/user.reg", "/m/gllib/machine.reg"},
        {"/h", "u", "m:/n", "/h/.config/gllib/user.reg", "/etc/xdg/gllib/machine.reg"},
        {"", "", "", "", "/etc/xdg/gllib/machine.reg"}}) {
    setenv("HOME", home, 1), setenv("XDG_CONFIG_HOME", user, 1), setenv("XDG_CONFIG_DIRS", machine, 1);
    EXPECT_EQ(GLRegistration::UserFile(), userFile);
    EXPECT_EQ(GLRegistration::MachineFile(), machineFile);
  }
  setenv("HOME", before.c_str(), 1), unsetenv("XDG_CONFIG_HOME"), unsetenv("XDG_CONFIG_DIRS");
}
