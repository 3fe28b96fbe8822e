// The header-only code for hosts: text, registration, creation by ProgID, and base classes of clients. No
// display.

#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Scene.h"
#include "support/TestRegistry.h"

namespace {

constexpr char kCollection[] = "{C1F0DF9D-ECE9-4EDF-82A3-700105F2D74F}";

class HostRegistry : public testing::Test {
 protected:
  /// Registers the collection class in one registry file, with a class identifier and a module.
  void Write(const char* aFile, const std::string& aClassId, const std::string& aModule) const {
    m_Registry.Put(aFile,
                   "Windows Registry Editor Version 5.00\r\n\r\n"
                   "[HKEY_CLASSES_ROOT\\gl.glcollection.1\\clsid]\r\n@=\"" +
                       aClassId + "\"\r\n\r\n[HKEY_CLASSES_ROOT\\CLSID\\" + kCollection +
                       "\\InprocServer32]\r\n\"ThreadingModel\"=\"Both\"\r\n@=\"" + aModule + "\"\r\n");
  }

  static HRESULT Make(const char* aProgID) {
    GLPtr<IGLCollection> object;
    const HRESULT result = GLCreateObjectByProgID(aProgID, IID_IGLCollection, object.PutVoid());
    EXPECT_EQ(static_cast<bool>(object), result == S_OK);
    int size = -1;
    if (object) object->GetSize(&size);
    EXPECT_EQ(size, object ? 0 : -1);
    return result;
  }

  const TestRegistry m_Registry;
};

bool IsWanted(IGLCapture& aCapture) {
  LONG enabled = -1;
  aCapture.IsEnabled(&enabled);
  return enabled == 1;
}

}  // namespace

TEST(HostText, ConvertsEachCharacterInBothDirections) {
  const struct {
    const char* m_szBytes;
    std::u16string_view m_Units;
    const char* m_szBack;
  } texts[] = {
      {"", u"", ""},
      {"Gr\xC3\xBC\xC3\x9F 1", u"Gr\u00FC\u00DF 1", "Gr\xC3\xBC\xC3\x9F 1"},
      {"\xE2\x82\xAC\xEF\xBF\xBF", u"\u20AC\uFFFF", "\xE2\x82\xAC\xEF\xBF\xBF"},
      {"\xF0\x9D\x84\x9E\xF4\x8F\xBF\xBF", u"\U0001D11E\U0010FFFF", "\xF0\x9D\x84\x9E\xF4\x8F\xBF\xBF"},
      // Invalid UTF-8: a lone continuation byte, a truncated, an overlong and a surrogate sequence.
      {"a\x80z", u"a\uFFFDz", "a\xEF\xBF\xBDz"},
      {"\xE2\x82", u"\uFFFD\uFFFD", "\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"\xC0\xAF", u"\uFFFD\uFFFD", "\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
  };
  for (const auto& text : texts) {
    const GLString string(text.m_szBytes);
    ASSERT_EQ(std::u16string_view(BSTR(string), SysStringLen(string)), text.m_Units) << text.m_szBytes;
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<const char*>(BSTR(string)) - 4, 4);
    EXPECT_EQ(bytes, 2 * text.m_Units.size()) << "the length before the text is in bytes";
    EXPECT_EQ(BSTR(string)[text.m_Units.size()], 0);
    EXPECT_EQ(GLString(string).Utf8(), text.m_szBack);
  }
  GLString lone;
  *lone.Put() = SysAllocStringLen(u"\xD800x\xDC00", 3);
  EXPECT_EQ(lone.Utf8(), "\xEF\xBF\xBDx\xEF\xBF\xBD");
  EXPECT_EQ(GLString().Utf8(), "");
}

TEST_F(HostRegistry, RegisteredClassesAreCreatedByName) {
  void* module = dlopen(GLLIB_MODULE_FILE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(module, nullptr) << dlerror();
  const auto call = [&](const char* aName) {
    return reinterpret_cast<HRESULT (*)()>(dlsym(module, aName))();
  };
  EXPECT_EQ(Make("Gl.GLCollection.1"), REGDB_E_CLASSNOTREG);
  ASSERT_EQ(call("DllRegisterServer"), S_OK);
  EXPECT_EQ(Make("Gl.GLCollection.1"), S_OK);
  EXPECT_EQ(Make("Gl.GLCollection"), S_OK) << "the name without a version";
  EXPECT_TRUE(GLCreate<IGLFog>("Gl.GLFog.1"));
  EXPECT_FALSE(GLCreate<IGLFog>("Gl.GLCoord.1")) << "the interface of another class";
  ASSERT_EQ(call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(Make("Gl.GLCollection.1"), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(call("DllCanUnloadNow"), S_OK);
  dlclose(module);
}

TEST_F(HostRegistry, ModuleRegistersItsLoadPath) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::copy_file(GLLIB_MODULE_FILE, m_Registry.Path() / "moved.so");
  std::filesystem::current_path(m_Registry.Path());
  void* module = dlopen("./moved.so", RTLD_NOW | RTLD_LOCAL);
  std::filesystem::current_path(before);
  ASSERT_NE(module, nullptr) << dlerror();
  ASSERT_EQ(reinterpret_cast<HRESULT (*)()>(dlsym(module, "DllRegisterServer"))(), S_OK);
  EXPECT_EQ(Make("Gl.GLCollection.1"), S_OK) << m_Registry.Get("machine.reg");
  dlclose(module);
}

TEST_F(HostRegistry, PrivilegedProgramsIgnoreTheEnvironment) {
  constexpr bool kIsPrivileged = true;
  EXPECT_TRUE(GLRegistration::MayLoad("/usr/lib/libgllib.so.1", kIsPrivileged));
  for (const char* name : {"", "libgllib.so.1", "./libgllib.so.1"})
    EXPECT_FALSE(GLRegistration::MayLoad(name, kIsPrivileged)) << name;
  EXPECT_TRUE(GLRegistration::MayLoad("libgllib.so.1", !kIsPrivileged));

  // A setuid program of another user, with a registry of this user.
  const auto host = m_Registry.Path() / "host", module = m_Registry.Path() / "module.so";
  std::filesystem::copy_file(GLLIB_PROGID_HOST_FILE, host);
  std::filesystem::copy_file(GLLIB_MODULE_FILE, module);
  Write("user.reg", kCollection, module);
  const auto run = [&] { return WEXITSTATUS(std::system(host.c_str())); };
  constexpr int kMade = 0, kPrivileged = 2;
  EXPECT_EQ(run(), kMade);
  constexpr uid_t kNobody = 65534;
  if (chown(host.c_str(), kNobody, kNobody) != 0 || chmod(host.c_str(), 04755) != 0)
    GTEST_SKIP() << "only root can create a program of another user";
  const int status = run();
  if (status == kMade && (std::system((host.string() + " privileged").c_str()) == 0))
    GTEST_SKIP() << "this system does not run setuid programs";
  EXPECT_EQ(status, kPrivileged) << "the user's file and the folder from the environment are ignored";
}

TEST_F(HostRegistry, ReportsFaultsOfARegistration) {
  EXPECT_EQ(GLCreateObjectByProgID("Gl.GLCollection.1", IID_IGLCollection, nullptr), E_POINTER);
  EXPECT_EQ(Make(nullptr), E_INVALIDARG);
  for (const char* id : {"", "{C1F0DF9D-ECE9-4EDF-82A3-700105F2D74G}", "C1F0DF9D-ECE9-4EDF-82A3-700105F2D74F",
                         "{C1F0DF9D-ECE9-4EDF-82A3-700105F2D74F}}"}) {
    Write("machine.reg", id, GLLIB_MODULE_FILE);
    EXPECT_EQ(Make("Gl.GLCollection.1"), CO_E_CLASSSTRING) << id;
  }
  Write("machine.reg", kCollection, "/nowhere/libgllib.so");
  EXPECT_EQ(Make("Gl.GLCollection.1"), CO_E_DLLNOTFOUND);
  Write("machine.reg", kCollection, "libm.so.6");
  EXPECT_EQ(Make("Gl.GLCollection.1"), CO_E_ERRORINDLL);
  m_Registry.Put("user.reg", "damaged");
  EXPECT_EQ(Make("Gl.GLCollection.1"), REGDB_E_READREGDB);
  Write("user.reg", kCollection, GLLIB_MODULE_FILE);
  EXPECT_EQ(Make("Gl.GLCollection.1"), S_OK) << "the user's entry precedes the machine's";
}

TEST(HostClients, CaptureServesEachRequestOnce) {
  const auto first = GLCreate<IGLPixmap>(CLSID_GLPixmap), second = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  auto capture = GLMake<TestCapture>();
  EXPECT_FALSE(IsWanted(*capture));
  capture->Request(first.Get());
  capture->Request(second.Get(), {.m_iX = 3, .m_iY = 4, .m_iWidth = 5, .m_iHeight = 6, .m_fZoom = 2.0f});
  EXPECT_EQ(first->AddRef(), 2u) << "a replaced request holds no reference";
  first->Release();
  ASSERT_TRUE(IsWanted(*capture));
  EXPECT_FALSE(IsWanted(*capture));

  capture->Request(first.Get());  // during the callback of the second request, whose values do not change
  GLPtr<IGLPixmap> target;
  capture->GetPixmap(target.Put());
  EXPECT_EQ(target, second);
  int x = 0, y = 0, width = 0, height = 0;
  capture->GetRectangle(&x, &y, &width, &height);
  EXPECT_EQ(std::vector({x, y, width, height}), std::vector({3, 4, 5, 6}));
  EXPECT_TRUE(IsWanted(*capture));
  capture->GetPixmap(target.Put());
  EXPECT_EQ(target, first);
}
