// Classes and identifiers, read from the source of the type library. Tests need a source other than the
// headers under test.

#pragma once

#include <regex>

#include "support/Test.h"

struct IdlInterface {
  std::string m_sName, m_sId;
};

/// A class with its interfaces. The first interface is its identity.
struct IdlClass {
  std::string m_sName, m_sId;
  std::vector<IdlInterface> m_vInterfaces;
};

inline std::string IdlText() {
  std::ostringstream text;
  text << std::ifstream(GLLIB_SOURCE_DIR "/src/component/GLLib.idl").rdbuf();
  return std::regex_replace(text.str(), std::regex("//[^\n]*"), "");
}

/// Calls aDo for each match of a pattern.
template <class Function>
void ForEach(const std::string& aText, const char* aPattern, Function aDo) {
  const std::regex pattern(aPattern);
  for (std::sregex_iterator match(aText.begin(), aText.end(), pattern), end; match != end; ++match)
    aDo(*match);
}

/// Identifiers of the library, its classes and its interfaces, by name.
inline std::map<std::string, std::string> IdlIdentifiers() {
  std::map<std::string, std::string> found;
  ForEach(IdlText(), R"(uuid\(([-0-9A-F]{36})\)[^\]]*\]\s+(?:interface|library|coclass) (\w+))",
          [&](const std::smatch& one) { found[one[2]] = one[1]; });
  return found;
}

/// Returns the classes in the order of registration.
inline const std::vector<IdlClass>& IdlClasses() {
  static const std::vector<IdlClass> classes = [] {
    std::vector<IdlClass> found;
    const auto identifiers = IdlIdentifiers();
    ForEach(IdlText(), R"(coclass (\w+) \{([^}]*)\})", [&](const std::smatch& one) {
      found.push_back({one[1], identifiers.at(one[1]), {}});
      ForEach(one[2], R"(interface (\w+);)", [&](const std::smatch& face) {
        found.back().m_vInterfaces.push_back({face[1], identifiers.at(face[1])});
      });
    });
    return found;
  }();
  return classes;
}

inline GUID IdentifierFromText(const std::string& aText) {
  GUID id{};
  unsigned a = 0, b = 0, c = 0, rest[8] = {};
  std::sscanf(aText.c_str(), "%8x-%4x-%4x-%2x%2x-%2x%2x%2x%2x%2x%2x", &a, &b, &c, &rest[0], &rest[1],
              &rest[2], &rest[3], &rest[4], &rest[5], &rest[6], &rest[7]);
  id = {a, static_cast<std::uint16_t>(b), static_cast<std::uint16_t>(c), {}};
  for (int i = 0; i < 8; ++i) id.Data4[i] = static_cast<std::uint8_t>(rest[i]);
  return id;
}

/// Texts of the registry. The key is a pair: the registry key below HKEY_CLASSES_ROOT, and the value's name,
/// which is empty for the default value.
using RegistryTexts = std::map<std::pair<std::string, std::string>, std::string>;

/// Returns the registry texts of a class.
inline RegistryTexts RegistryTextsOf(const IdlClass& aClass, const std::string& aModule) {
  const std::string current = "Gl." + aClass.m_sName, versioned = current + ".1",
                    id = "{" + aClass.m_sId + "}";
  const std::string description = aClass.m_sName + " Class", key = "CLSID\\" + id;
  return {{{versioned, ""}, description},
          {{versioned + "\\CLSID", ""}, id},
          {{current, ""}, description},
          {{current + "\\CLSID", ""}, id},
          {{current + "\\CurVer", ""}, versioned},
          {{key, ""}, description},
          {{key + "\\ProgID", ""}, versioned},
          {{key + "\\VersionIndependentProgID", ""}, current},
          {{key + "\\InprocServer32", ""}, aModule},
          {{key + "\\InprocServer32", "ThreadingModel"}, "Both"},
          {{key + "\\TypeLib", ""}, "{" + IdlIdentifiers().at("GLLib") + "}"}};
}
