// How a host finds a module that is registered. Header only; any thread.

#pragma once

#include <gllib/GLPlatform.h>

#ifdef _WIN32

#include <objbase.h>

/// Makes an object of the class that a ProgID names, over the registration.
inline HRESULT GLCreateObjectByProgID(const char* aProgID, REFIID riid, void** ppv) noexcept {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  wchar_t wide[128] = {};
  if (MultiByteToWideChar(CP_UTF8, 0, aProgID, -1, wide, 128) == 0) return E_INVALIDARG;
  CLSID id{};
  const HRESULT found = CLSIDFromProgID(wide, &id);
  return FAILED(found) ? found : CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, riid, ppv);
}

#else

#include <dlfcn.h>

#include <strings.h>
#include <cstdio>
#include <fstream>
#include <string>

namespace gllib_registry {

/// The folders that registry files stand in, the user's first.
inline std::string File(bool aUser) {
  const auto variable = [](const char* aName) {
    const char* value = std::getenv(aName);
    return std::string(value != nullptr ? value : "");
  };
  const std::string name = aUser ? "/user.reg" : "/machine.reg";
  if (const std::string folder = variable("GLLIB_REGISTRY_DIR"); !folder.empty()) return folder + name;
  if (aUser) {
    const std::string home = variable("XDG_CONFIG_HOME");
    return (home.empty() ? variable("HOME") + "/.config" : home) + "/gllib" + name;
  }
  const std::string folders = variable("XDG_CONFIG_DIRS");
  return (folders.empty() ? "/etc/xdg" : folders.substr(0, folders.find(':'))) + "/gllib" + name;
}

/// The default value of a key under HKEY_CLASSES_ROOT in one registry file; empty when it isn't there.
inline std::string Look(const std::string& aFile, const std::string& aKey) {
  std::ifstream in(aFile);
  const std::string wanted = "[HKEY_CLASSES_ROOT\\" + aKey + "]";
  bool inside = false;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line.front() == '[') inside = strcasecmp(line.c_str(), wanted.c_str()) == 0;
    if (!inside || line.rfind("@=\"", 0) != 0) continue;
    std::string value;
    for (std::size_t i = 3; i < line.size() && line[i] != '"'; ++i) {
      if (line[i] == '\\' && i + 1 < line.size()) ++i;
      value += line[i];
    }
    return value;
  }
  return {};
}

inline std::string DefaultOf(const std::string& aKey) {
  const std::string own = Look(File(true), aKey);
  return own.empty() ? Look(File(false), aKey) : own;
}

inline bool Parse(const std::string& aText, CLSID* aId) {
  unsigned v[11] = {};
  if (std::sscanf(aText.c_str(), "{%8x-%4x-%4x-%2x%2x-%2x%2x%2x%2x%2x%2x}", &v[0], &v[1], &v[2], &v[3], &v[4],
                  &v[5], &v[6], &v[7], &v[8], &v[9], &v[10]) != 11) {
    return false;
  }
  *aId = {v[0], static_cast<std::uint16_t>(v[1]), static_cast<std::uint16_t>(v[2]), {}};
  for (int i = 0; i < 8; ++i) aId->Data4[i] = static_cast<std::uint8_t>(v[3 + i]);
  return true;
}

}  // namespace gllib_registry

/// Makes an object of the class that a ProgID names: finds the module in the registry files, loads it, and
/// asks its class factory. The module stays loaded.
/// @param aProgID "Gl.GLContext.1", or "Gl.GLContext" for the current version
/// @param ppv receives a counted reference, or null
/// @return S_OK; E_FAIL when the class isn't registered or its module can't be loaded; the factory's failures
inline HRESULT GLCreateObjectByProgID(const char* aProgID, REFIID riid, void** ppv) noexcept {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  if (aProgID == nullptr) return E_INVALIDARG;
  try {
    const std::string text = gllib_registry::DefaultOf(std::string(aProgID) + "\\CLSID");
    CLSID id{};
    if (!gllib_registry::Parse(text, &id)) return E_FAIL;
    const std::string file = gllib_registry::DefaultOf("CLSID\\" + text + "\\InprocServer32");
    void* module = file.empty() ? nullptr : dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) return E_FAIL;
    using GetClassObject = HRESULT (*)(REFCLSID, REFIID, void**);
    const auto getClassObject = reinterpret_cast<GetClassObject>(dlsym(module, "DllGetClassObject"));
    if (getClassObject == nullptr) return E_FAIL;
    void* factory = nullptr;
    HRESULT result = getClassObject(id, IID_IClassFactory, &factory);
    if (FAILED(result)) return result;
    result = static_cast<IClassFactory*>(factory)->CreateInstance(nullptr, riid, ppv);
    static_cast<IClassFactory*>(factory)->Release();
    return result;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

#endif
