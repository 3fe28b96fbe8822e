// The type library's source against the headers: a host that goes by the one must find the operations of the
// other.

#include <gllib/GLLib.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "component/PublishedIdentifiers.h"

namespace {

/// What one side says: under each name its lines, in order, and in them one way of writing.
using Declarations = std::map<std::string, std::vector<std::string>>;

std::string WithoutComments(const std::filesystem::path& aFile) {
  std::ostringstream text;
  text << std::ifstream(aFile).rdbuf();
  return std::regex_replace(text.str(), std::regex("//[^\n]*"), "");
}

std::string Replaced(std::string aText, const std::vector<std::pair<const char*, const char*>>& aChanges) {
  for (const auto& [from, to] : aChanges) aText = std::regex_replace(aText, std::regex(from), to);
  return aText;
}

/// Calls aDo with each match of a pattern.
template <class Function>
void ForEach(const std::string& aText, const char* aPattern, Function aDo) {
  const std::regex pattern(aPattern);
  for (std::sregex_iterator match(aText.begin(), aText.end(), pattern), end; match != end; ++match)
    aDo(*match);
}

/// The pieces of a text between marks, blanks around each dropped.
std::vector<std::string> Split(const std::string& aText, char aMark) {
  std::vector<std::string> pieces;
  std::istringstream in(aText);
  for (std::string piece; std::getline(in, piece, aMark);) {
    piece = Replaced(piece, {{"\\s+", " "}, {"^ | $", ""}, {" ?\\* ?", "* "}, {"\\* \\*", "**"}});
    if (!piece.empty()) pieces.push_back(piece);
  }
  return pieces;
}

/// Structures and enumerations are written alike on both sides.
void ReadTypes(const std::string& aText, Declarations& aInto) {
  ForEach(aText, R"((?:struct|enum) (\w+)(?: : int)? \{([^{}]*)\})", [&](const std::smatch& type) {
    aInto[type[1]] = Split(type[2], type[2].str().find(';') != std::string::npos ? ';' : ',');
  });
}

Declarations FromHeaders() {
  Declarations found;
  for (const auto& file :
       std::filesystem::directory_iterator(GLLIB_SOURCE_DIR "/src/component/include/gllib")) {
    const std::string text = Replaced(WithoutComments(file.path()), {{"\\bLONG\\b|std::int32_t", "long"},
                                                                     {"\\bULONG\\b", "unsigned long"},
                                                                     {"std::uint16_t", "unsigned short"},
                                                                     {"std::uint8_t", "unsigned char"}});
    if (file.path().filename() == "GLTypes.h" || file.path().filename().string().starts_with("IGL"))
      ReadTypes(text, found);
    ForEach(text, R"(struct (IGL\w+) : IUnknown \{([^]*?)\n\};)", [&](const std::smatch& face) {
      std::vector<std::string>& lines = found[face[1]];
      ForEach(face[2], R"(virtual HRESULT (\w+)\(([^)]*)\))", [&](const std::smatch& operation) {
        lines.push_back(operation[1].str() + "()");
        for (const std::string& argument : Split(operation[2], ',')) lines.push_back(argument);
      });
    });
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
  ForEach(text, R"(coclass (\w+) \{([^}]*)\})", [&](const std::smatch& one) {
    found.push_back(one[1]);
    ForEach(one[2], R"(interface (\w+);)", [&](const std::smatch& face) { found.push_back(face[1]); });
  });
  EXPECT_EQ(found, maps) << "the first interface of a class is its identity";
}
