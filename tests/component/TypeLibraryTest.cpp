// The type library's source against the headers: a host that goes by the one must find the operations of the
// other.

#include "component/IdlClasses.h"
#include "support/Test.h"

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

}  // namespace

TEST(TypeLibrary, DeclaresWhatTheHeadersDo) {
  const Declarations headers = FromHeaders(), library = FromTypeLibrary(IdlText());
  ASSERT_EQ(library.size(), 27u + 7u + 12u) << "interfaces, structures and enumerations";
  for (const auto& [name, lines] : headers) {
    ASSERT_TRUE(library.contains(name)) << name;
    EXPECT_FALSE(lines.empty()) << name;
    EXPECT_EQ(library.at(name), lines) << name;
  }
  EXPECT_EQ(library.size(), headers.size());
}
