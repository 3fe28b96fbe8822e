// What the public headers declare, read from their text, for tests that hold another description of the
// interfaces against them.

#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

/// What one side says: under each name its lines, in order, and in them one way of writing.
using Declarations = std::map<std::string, std::vector<std::string>>;

inline std::string WithoutComments(const std::filesystem::path& aFile) {
  std::ostringstream text;
  text << std::ifstream(aFile).rdbuf();
  return std::regex_replace(text.str(), std::regex("//[^\n]*"), "");
}

inline std::string Replaced(std::string aText,
                            const std::vector<std::pair<const char*, const char*>>& aChanges) {
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
inline std::vector<std::string> Split(const std::string& aText, char aMark) {
  std::vector<std::string> pieces;
  std::istringstream in(aText);
  for (std::string piece; std::getline(in, piece, aMark);) {
    piece = Replaced(piece, {{"\\s+", " "}, {"^ | $", ""}, {" ?\\* ?", "* "}, {"\\* \\*", "**"}});
    if (!piece.empty()) pieces.push_back(piece);
  }
  return pieces;
}

/// Structures and enumerations are written alike in headers and type library.
inline void ReadTypes(const std::string& aText, Declarations& aInto) {
  ForEach(aText, R"((?:struct|enum) (\w+)(?: : int)? \{([^{}]*)\})", [&](const std::smatch& type) {
    aInto[type[1]] = Split(type[2], type[2].str().find(';') != std::string::npos ? ';' : ',');
  });
}

/// The text of a header, with fixed-width types under the names that the type library has for them.
inline std::string HeaderText(const std::filesystem::path& aFile) {
  return Replaced(WithoutComments(aFile), {{"\\bLONG\\b|std::int32_t", "long"},
                                           {"\\bULONG\\b", "unsigned long"},
                                           {"std::uint16_t", "unsigned short"},
                                           {"std::uint8_t", "unsigned char"}});
}

/// The operations of the interfaces in a header: each by its name and its arguments, "Draw()", "IGLCanvas*
/// aCanvas".
inline void ReadInterfaces(const std::string& aText, Declarations& aInto) {
  ForEach(aText, R"(struct (IGL\w+) : IUnknown \{([^]*?)\n\};)", [&](const std::smatch& face) {
    std::vector<std::string>& lines = aInto[face[1]];
    ForEach(face[2], R"(virtual HRESULT (\w+)\(([^)]*)\))", [&](const std::smatch& operation) {
      lines.push_back(operation[1].str() + "()");
      for (const std::string& argument : Split(operation[2], ',')) lines.push_back(argument);
    });
  });
}

/// All interfaces of the public headers.
inline Declarations InterfacesOfHeaders() {
  Declarations found;
  for (const auto& file :
       std::filesystem::directory_iterator(GLLIB_SOURCE_DIR "/src/component/include/gllib"))
    ReadInterfaces(HeaderText(file.path()), found);
  return found;
}
