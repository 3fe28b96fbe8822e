#include "shared/model/ModelReader.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

#include "shared/model/plain/ObjReader.h"
#include "shared/model/plain/StlReader.h"

const char* const kReadableFiles = "OBJ and STL files";

std::vector<Part> ReadParts(const std::string& aPath, const ReadProgress& aProgress) {
  const std::filesystem::path path = aPath;
  std::string kind = path.extension().string();
  std::transform(kind.begin(), kind.end(), kind.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (kind != ".obj" && kind != ".stl") throw ModelError("it is neither an OBJ nor an STL file");
  std::ifstream file(path, std::ios::binary);
  if (!file) throw ModelError("it can't be opened");
  if (file.peek() == std::ifstream::traits_type::eof()) throw ModelError("it is empty");
  return kind == ".obj" ? ReadObj(file, path.parent_path(), aProgress) : ReadStl(file, aProgress);
}
