/// @file
/// Creation of an object by its ProgID, over the class registration of this system: COM's own on Windows,
/// elsewhere the registry-script files that the module's DllRegisterServer writes. Any thread.

#pragma once

#include <gllib/GLPlatform.h>

#ifdef _WIN32

#include <objbase.h>

#include <string>

/// Makes an object of a registered class, in process. The thread must have called CoInitializeEx.
/// @param aProgID ASCII, such as "Gl.GLContext.1"
/// @param riid    the wanted interface
/// @param ppv     receives a counted reference, or null
/// @return S_OK; E_POINTER; or what COM's look-up, the module or its factory answered
inline HRESULT GLCreateObjectByProgID(const char* aProgID, REFIID riid, void** ppv) noexcept {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  if (aProgID == nullptr) return E_INVALIDARG;
  CLSID classId;
  const std::wstring wide(aProgID, aProgID + std::strlen(aProgID));
  const HRESULT found = CLSIDFromProgID(wide.c_str(), &classId);
  return FAILED(found) ? found : CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, riid, ppv);
}

#else

#include <dlfcn.h>

#include <algorithm>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

/// No class is registered under the name or the identifier.
inline constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154);
/// A class is registered with an identifier that isn't one.
inline constexpr HRESULT CO_E_CLASSSTRING = static_cast<HRESULT>(0x800401F3);
/// The registered module can't be loaded.
inline constexpr HRESULT CO_E_DLLNOTFOUND = static_cast<HRESULT>(0x800401F8);
/// The registered module has no DllGetClassObject.
inline constexpr HRESULT CO_E_ERRORINDLL = static_cast<HRESULT>(0x800401F9);

/// Reads the registration; a part of GLCreateObjectByProgID.
namespace GLRegistration {

/// The value of an environment variable; empty for none.
inline std::string Environment(const char* aName) {
  const char* value = std::getenv(aName);
  return value != nullptr ? value : "";
}

/// The folder that GLLIB_REGISTRY_DIR names, else gllib/ under an XDG folder.
inline std::string Folder(const std::string& aXdgFolder) {
  const std::string own = Environment("GLLIB_REGISTRY_DIR");
  return own.empty() ? aXdgFolder + "/gllib" : own;
}

/// The user's file.
inline std::string UserFile() {
  const std::string xdg = Environment("XDG_CONFIG_HOME");
  return Folder(xdg.empty() ? Environment("HOME") + "/.config" : xdg) + "/user.reg";
}

/// The machine's file: of the folders in XDG_CONFIG_DIRS the first, which is the most important one.
inline std::string MachineFile() {
  const std::string xdg = Environment("XDG_CONFIG_DIRS");
  return Folder(xdg.empty() ? "/etc/xdg" : xdg.substr(0, xdg.find(':'))) + "/machine.reg";
}

/// Whether two names of keys are the same: case doesn't count.
inline bool EqualNames(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return lower(x) == lower(y); });
}

/// The text of a quoted value, a backslash standing before each backslash and quote of it.
inline std::optional<std::string> Unquote(std::string_view aQuoted) {
  if (aQuoted.empty() || aQuoted.front() != '"') return std::nullopt;
  std::string text;
  for (std::size_t i = 1; i < aQuoted.size(); ++i) {
    if (aQuoted[i] == '"') return text;
    if (aQuoted[i] == '\\' && ++i == aQuoted.size()) break;
    text += aQuoted[i];
  }
  return std::nullopt;
}

/// The default value of a key in one file.
inline std::optional<std::string> DefaultValue(const std::string& aFile, std::string_view aKey) {
  std::ifstream file(aFile);
  bool inKey = false;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line.front() == '[' && line.back() == ']') {
      inKey = EqualNames(std::string_view(line).substr(1, line.size() - 2), aKey);
    } else if (inKey && line.compare(0, 2, "@=") == 0) {
      return Unquote(std::string_view(line).substr(2));
    }
  }
  return std::nullopt;
}

/// The default value of a key under the class root; the user's entry comes before the machine's.
inline std::optional<std::string> ClassValue(const std::string& aKey) {
  const std::string key = "HKEY_CLASSES_ROOT\\" + aKey;
  std::optional<std::string> value = DefaultValue(UserFile(), key);
  return value ? value : DefaultValue(MachineFile(), key);
}

/// Reads "{1750378D-FDFD-11D3-A317-000000000000}".
inline std::optional<CLSID> ParseClassId(std::string_view aText) {
  constexpr std::string_view kShape = "{00000000-0000-0000-0000-000000000000}";
  if (aText.size() != kShape.size()) return std::nullopt;
  std::uint8_t bytes[16] = {};
  std::size_t digits = 0;
  for (std::size_t i = 0; i < kShape.size(); ++i) {
    const char c = aText[i];
    if (kShape[i] != '0') {
      if (c != kShape[i]) return std::nullopt;
      continue;
    }
    const int digit = c >= '0' && c <= '9'   ? c - '0'
                      : c >= 'A' && c <= 'F' ? c - 'A' + 10
                      : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                             : -1;
    if (digit < 0) return std::nullopt;
    bytes[digits / 2] = static_cast<std::uint8_t>(bytes[digits / 2] * 16 + digit);
    ++digits;
  }
  const auto word = [&](int i) { return static_cast<std::uint16_t>(bytes[i] * 256 + bytes[i + 1]); };
  CLSID id = {word(0) * 65536u + word(2), word(4), word(6), {}};
  std::copy(bytes + 8, bytes + 16, id.Data4);
  return id;
}

}  // namespace GLRegistration

/// Makes an object of a registered class, in process. The module that holds it is loaded, and stays so.
/// @param aProgID "Gl.GLContext.1", or "Gl.GLContext" for the current version
/// @param riid    the wanted interface
/// @param ppv     receives a counted reference, or null
/// @return S_OK; E_POINTER; E_INVALIDARG when aProgID is null; REGDB_E_CLASSNOTREG, CO_E_CLASSSTRING,
///         CO_E_DLLNOTFOUND, CO_E_ERRORINDLL; E_OUTOFMEMORY; or what the module or its factory answered
inline HRESULT GLCreateObjectByProgID(const char* aProgID, REFIID riid, void** ppv) noexcept try {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  if (aProgID == nullptr) return E_INVALIDARG;
  const auto idText = GLRegistration::ClassValue(std::string(aProgID) + "\\CLSID");
  if (!idText) return REGDB_E_CLASSNOTREG;
  const auto classId = GLRegistration::ParseClassId(*idText);
  if (!classId) return CO_E_CLASSSTRING;
  const auto path = GLRegistration::ClassValue("CLSID\\" + *idText + "\\InprocServer32");
  if (!path) return REGDB_E_CLASSNOTREG;

  void* module = dlopen(path->c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) return CO_E_DLLNOTFOUND;
  using GetClassObject = HRESULT (*)(REFCLSID, REFIID, void**);
  const auto get = reinterpret_cast<GetClassObject>(dlsym(module, "DllGetClassObject"));
  if (get == nullptr) return CO_E_ERRORINDLL;
  IClassFactory* factory = nullptr;
  const HRESULT got = get(*classId, IID_IClassFactory, reinterpret_cast<void**>(&factory));
  if (FAILED(got)) return got;
  const HRESULT made = factory->CreateInstance(nullptr, riid, ppv);
  factory->Release();
  return made;
} catch (...) {
  return E_OUTOFMEMORY;
}

#endif
