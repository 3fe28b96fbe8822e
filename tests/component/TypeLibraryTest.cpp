// The type library's source against the headers: a host that goes by the one must find the operations of the
// other.

#include <gllib/GLLib.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "component/HeaderDeclarations.h"
#include "component/PublishedIdentifiers.h"

namespace {

Declarations FromHeaders() {
  Declarations found = InterfacesOfHeaders();
  for (const auto& file :
       std::filesystem::directory_iterator(GLLIB_SOURCE_DIR "/src/component/include/gllib")) {
    const std::string name = file.path().filename().string();
    if (name == "GLTypes.h" || name.starts_with("IGL")) ReadTypes(HeaderText(file.path()), found);
  }
  return found;
}

Declarations FromTypeLibrary(const std::string& aText) {
  Declarations found;
  ReadTypes(aText, found);
  ForEach(aText, R"(interface (IGL\w+) : IUnknown \{([^}]*)\})", [&](const std::smatch& face) {
    std::vector<std::string>& lines = found[face[1]];
    ForEach(
        face[2], R"((?:\[prop(get|put)\] )?HRESULT (\w+)\(([^;]*)\);)", [&](const std::smatch& operation) {
          lines.push_back((operation[1].matched ? operation[1].str() + "_" : "") + operation[2].str() + "()");
          // Without directions; an array goes as the pointer that it is.
          const std::string arguments =
              Replaced(operation[3], {{R"(\[[a-z, ]+\])", ""}, {R"((\w+)\[\d\])", "* $1"}});
          for (const std::string& argument : Split(arguments, ',')) lines.push_back(argument);
        });
  });
  return found;
}

std::string Source() { return WithoutComments(GLLIB_SOURCE_DIR "/src/component/GLLib.idl"); }

}  // namespace

TEST(TypeLibrary, DeclaresWhatTheHeadersDo) {
  const Declarations headers = FromHeaders(), library = FromTypeLibrary(Source());
  ASSERT_EQ(library.size(), 27u + 7u + 12u) << "interfaces, structures and enumerations";
  for (const auto& [name, lines] : headers) {
    ASSERT_TRUE(library.contains(name)) << name;
    EXPECT_FALSE(lines.empty()) << name;
    EXPECT_EQ(library.at(name), lines) << name;
  }
  EXPECT_EQ(library.size(), headers.size());
}

TEST(TypeLibrary, GivesDirectionsThatPointersCanHave) {
  int arguments = 0;
  ForEach(Source(), R"(\[((?:in|out)[a-z, ]*)\] ([^,;]+)[,)])", [&](const std::smatch& argument) {
    ++arguments;
    const std::string direction = argument[1], type = argument[2];
    const bool writes = direction.find("out") != std::string::npos;
    EXPECT_TRUE(!writes || type.find('*') != std::string::npos) << direction << ' ' << type;
    EXPECT_TRUE(writes || type.find("**") == std::string::npos) << direction << ' ' << type;
  });
  EXPECT_GT(arguments, 400);
}

TEST(TypeLibrary, CarriesThePublishedIdentifiersAndMaps) {
  const std::string text = Source();
  std::map<std::string, std::string> identifiers;
  ForEach(text, R"(uuid\(([-0-9A-F]{36})\)[^\]]*\]\s+(?:interface|library|coclass) (\w+))",
          [&](const std::smatch& one) { identifiers[one[2]] = one[1]; });
  std::map<std::string, std::string> published = {{"GLLib", "17503780-FDFD-11D3-A317-000000000000"}};
  std::vector<std::string> maps, found;
  for (const PublishedInterface& face : kPublishedCallbacks) published[face.m_szName] = face.m_szId;
  for (const PublishedClass& one : kPublishedClasses) {
    published[one.m_szName] = one.m_szId;
    maps.push_back(one.m_szName);
    for (const PublishedInterface& face : one.m_vInterfaces) {
      published[face.m_szName] = face.m_szId;
      maps.push_back(face.m_szName);
    }
  }
  EXPECT_EQ(identifiers, published);
  // The build for Windows reads the classes' identifiers off the comments of their header.
  std::ostringstream header;
  header << std::ifstream(GLLIB_SOURCE_DIR "/src/component/include/gllib/GLClasses.h").rdbuf();
  for (const PublishedClass& one : kPublishedClasses) {
    const std::string comment =
        std::string("/// {") + one.m_szId + "}\ninline constexpr CLSID CLSID_" + one.m_szName + " =";
    EXPECT_NE(header.str().find(comment), std::string::npos) << one.m_szName;
  }
  ForEach(text, R"(coclass (\w+) \{([^}]*)\})", [&](const std::smatch& one) {
    found.push_back(one[1]);
    ForEach(one[2], R"(interface (\w+);)", [&](const std::smatch& face) { found.push_back(face[1]); });
  });
  EXPECT_EQ(found, maps) << "the first interface of a class is its identity";
}
