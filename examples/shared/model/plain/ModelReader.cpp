// ModelReader: selects the OBJ or STL reader by the file extension. Any thread.

#include "shared/model/ModelReader.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

#include "shared/model/plain/ObjReader.h"
#include "shared/model/plain/StlReader.h"

namespace {

/// Returns the file extension in lower case, with its dot.
std::string EndingOf(const std::filesystem::path& aPath) {
  std::string ending = aPath.extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char aCharacter) { return static_cast<char>(std::tolower(aCharacter)); });
  return ending;
}

}  // namespace

const char* const kReadableFiles = "OBJ and STL files";

bool IsModelName(const std::string& aName) {
  const std::string ending = EndingOf(aName);
  return ending == ".obj" || ending == ".stl";
}

std::vector<Part> ReadParts(const std::string& aPath, const ReadProgress& aProgress) {
  const std::filesystem::path path = aPath;
  if (!IsModelName(aPath)) throw ModelError("it is neither an OBJ nor an STL file");
  std::ifstream file(path, std::ios::binary);
  if (!file) throw ModelError("cannot open the file");
  if (file.peek() == std::ifstream::traits_type::eof()) throw ModelError("it is empty");
  return EndingOf(path) == ".obj" ? ReadObj(file, path.parent_path(), aProgress) : ReadStl(file, aProgress);
}
