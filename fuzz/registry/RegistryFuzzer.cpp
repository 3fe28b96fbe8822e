// Feeds the reader of registry files. What it accepts has to read the same again once it is written, and a
// key that is made has to be there, until it is removed.

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/linux/registry/RegistryFile.h"

namespace {

std::string Written(const RegistryFile& aFile) {
  const std::string name =
      (std::filesystem::temp_directory_path() / ("gllib-fuzz-" + std::to_string(getpid()) + ".reg")).string();
  if (aFile.Save(name) != ERROR_SUCCESS) std::abort();
  std::ifstream in(name, std::ios::binary);
  std::string text(std::istreambuf_iterator<char>(in), {});
  std::filesystem::remove(name);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* aData, std::size_t aSize) {
  RegistryFile file;
  if (!file.Parse({aData, aData + aSize})) return 0;
  const std::string once = Written(file);
  RegistryFile again;
  if (!again.Parse(once) || Written(again) != once) std::abort();

  const std::string key = "HKEY_CURRENT_USER\\Software\\Probe";
  file.Make(key + "\\Below").m_Values["name"].m_vData = {'x', 0};
  RegistryFile more;
  if (!more.Parse(Written(file)) || more.Find(key) == nullptr) std::abort();
  if (!more.Remove(key) || more.Find(key + "\\Below") != nullptr) std::abort();
  return 0;
}
