/// @file
/// Creation of an object by its ProgID. The class registration is COM's on Windows, and the registry files
/// that the module's DllRegisterServer writes on other systems. Any thread.

#pragma once

#include <gllib/GLPlatform.h>

#ifdef _WIN32

#include <objbase.h>

#include <cstring>
#include <string>

/// Creates an object of a registered class, in process. The thread must have called CoInitializeEx.
/// @param aProgID ASCII, such as "Gl.GLContext.1"
/// @param riid    the wanted interface
/// @param ppv     receives a counted reference, or null
/// @return S_OK; E_POINTER; E_INVALIDARG if aProgID is null; E_OUTOFMEMORY; or the result of COM's look-up,
///         the module or its factory
inline HRESULT GLCreateObjectByProgID(const char* aProgID, REFIID riid, void** ppv) noexcept try {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  if (aProgID == nullptr) return E_INVALIDARG;
  CLSID classId;
  const auto* bytes = reinterpret_cast<const unsigned char*>(aProgID);
  const std::wstring wide(bytes, bytes + std::strlen(aProgID));
  const HRESULT found = CLSIDFromProgID(wide.c_str(), &classId);
  return FAILED(found) ? found : CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, riid, ppv);
} catch (...) {
  return E_OUTOFMEMORY;
}

#else

#include <dlfcn.h>
#include <gllib/GLNames.h>
#include <gllib/GLRegistryFile.h>

#include <algorithm>
#include <map>

/// A registry file cannot be read, or is damaged.
inline constexpr HRESULT REGDB_E_READREGDB = static_cast<HRESULT>(0x80040150);
/// No class is registered under the name or the identifier.
inline constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154);
/// A class is registered with an invalid identifier.
inline constexpr HRESULT CO_E_CLASSSTRING = static_cast<HRESULT>(0x800401F3);
/// The registered module cannot be loaded.
inline constexpr HRESULT CO_E_DLLNOTFOUND = static_cast<HRESULT>(0x800401F8);
/// The registered module has no DllGetClassObject.
inline constexpr HRESULT CO_E_ERRORINDLL = static_cast<HRESULT>(0x800401F9);

/// Reads the registration; a part of GLCreateObjectByProgID.
namespace GLRegistration {

/// @cond
/// The default values of the keys under the class root in one registry file.
class ClassTexts {
 public:
  /// Reads a file. A file that does not exist, or that this program may not read, has no keys.
  bool Load(const std::string& aFile) {
    std::string text;
    const FileState state = ReadFile(aFile, text);
    if (state == FileState::kAbsent || state == FileState::kDenied) return true;
    return state == FileState::kRead && (text.empty() || ReadScript(text, *this));
  }
  const std::string* Find(const std::string& aKey) const {
    const auto found = m_Texts.find(aKey);
    return found != m_Texts.end() ? &found->second : nullptr;
  }

  // Called by ReadScript.
  void Key(std::string_view aName, const std::string&) {
    constexpr std::string_view kRoot = "HKEY_CLASSES_ROOT\\";
    m_bClass = GLNames::StartsWith(aName, kRoot);
    if (m_bClass) m_sKey = aName.substr(kRoot.size());
  }
  void Entry(const std::string& aName, const Value& aValue, std::string_view, const std::string&) {
    if (!m_bClass || !aName.empty()) return;
    m_Texts.erase(m_sKey);  // the last value is valid
    if (aValue.m_dwType == kTypeText) m_Texts[m_sKey] = reinterpret_cast<const char*>(aValue.m_vData.data());
  }
  void End(const std::string&) noexcept {}

 private:
  std::map<std::string, std::string, GLNames::Less> m_Texts;
  std::string m_sKey;
  bool m_bClass = false;
};
/// @endcond

/// Reads "{1750378D-FDFD-11D3-A317-000000000000}".
inline std::optional<CLSID> ParseClassId(std::string_view aText) {
  constexpr std::string_view kShape = "{00000000-0000-0000-0000-000000000000}";
  if (aText.size() != kShape.size()) return std::nullopt;
  std::uint8_t bytes[16] = {};
  std::size_t digits = 0;
  for (std::size_t i = 0; i < kShape.size(); ++i) {
    if (kShape[i] != '0') {
      if (aText[i] != kShape[i]) return std::nullopt;
      continue;
    }
    const int digit = Script::Digit(aText[i]);
    if (digit < 0) return std::nullopt;
    bytes[digits / 2] = static_cast<std::uint8_t>(bytes[digits / 2] * 16 + digit);
    ++digits;
  }
  const auto word = [&](int aIndex) {
    return static_cast<std::uint16_t>(bytes[aIndex] * 256 + bytes[aIndex + 1]);
  };
  CLSID id = {word(0) * 65536u + word(2), word(4), word(6), {}};
  std::copy(bytes + 8, bytes + 16, id.Data4);
  return id;
}

/// A registered class.
struct RegisteredClass {
  CLSID m_Id{};           ///< class identifier
  std::string m_sModule;  ///< path of its module
};

/// Looks up a class. The user's entry has precedence over the machine's.
/// @return S_OK; REGDB_E_READREGDB, REGDB_E_CLASSNOTREG, CO_E_CLASSSTRING
inline HRESULT FindClass(const std::string& aProgID, RegisteredClass& aClass) {
  ClassTexts user, machine;
  if (!user.Load(UserFile()) || !machine.Load(MachineFile())) return REGDB_E_READREGDB;
  const auto find = [&](const std::string& aKey) {
    const std::string* text = user.Find(aKey);
    return text != nullptr ? text : machine.Find(aKey);
  };
  const std::string* idText = find(aProgID + "\\CLSID");
  if (idText == nullptr) return REGDB_E_CLASSNOTREG;
  const auto id = ParseClassId(*idText);
  if (!id) return CO_E_CLASSSTRING;
  const std::string* module = find("CLSID\\" + *idText + "\\InprocServer32");
  if (module == nullptr) return REGDB_E_CLASSNOTREG;
  aClass = {*id, *module};
  return S_OK;
}

/// Returns whether a program may load a module by this name. A privileged program accepts only absolute
/// paths: with a relative path the caller could select the module by its working folder.
inline bool MayLoad(const std::string& aModule, bool aPrivileged) noexcept {
  return !aPrivileged || (!aModule.empty() && aModule.front() == '/');
}

}  // namespace GLRegistration

/// Creates an object of a registered class, in process. Loads its module, which remains loaded. A privileged
/// program (setuid) reads only /etc/xdg/gllib/machine.reg and accepts only absolute module paths in it.
/// @param aProgID "Gl.GLContext.1", or "Gl.GLContext" for the current version
/// @param riid    the wanted interface
/// @param ppv     receives a counted reference, or null
/// @return S_OK; E_POINTER; E_INVALIDARG if aProgID is null; REGDB_E_READREGDB, REGDB_E_CLASSNOTREG,
///         CO_E_CLASSSTRING, CO_E_DLLNOTFOUND, CO_E_ERRORINDLL; E_OUTOFMEMORY; or the result of the module or
///         its factory
inline HRESULT GLCreateObjectByProgID(const char* aProgID, REFIID riid, void** ppv) noexcept try {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  if (aProgID == nullptr) return E_INVALIDARG;
  GLRegistration::RegisteredClass registered;
  const HRESULT found = GLRegistration::FindClass(aProgID, registered);
  if (FAILED(found)) return found;
  if (!GLRegistration::MayLoad(registered.m_sModule, GLRegistration::IsPrivileged())) return CO_E_DLLNOTFOUND;

  void* module = dlopen(registered.m_sModule.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) return CO_E_DLLNOTFOUND;
  using GetClassObject = HRESULT (*)(REFCLSID, REFIID, void**);
  const auto get = reinterpret_cast<GetClassObject>(dlsym(module, "DllGetClassObject"));
  if (get == nullptr) return CO_E_ERRORINDLL;
  IClassFactory* factory = nullptr;
  const HRESULT got = get(registered.m_Id, IID_IClassFactory, reinterpret_cast<void**>(&factory));
  if (FAILED(got)) return got;
  const HRESULT made = factory->CreateInstance(nullptr, riid, ppv);
  factory->Release();
  return made;
} catch (...) {
  return E_OUTOFMEMORY;
}

#endif
