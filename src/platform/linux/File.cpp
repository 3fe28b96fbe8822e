// Reading of files on Linux: names are converted to UTF-8. Any thread.

#include "platform/File.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <string_view>

namespace {

/// Throws if the name is not valid UTF-16.
std::FILE* Open(std::u16string_view aName) {
  const std::filesystem::path name(aName);
  // Without O_NONBLOCK, open would wait for a writer of a pipe.
  const int descriptor = open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0) return nullptr;
  std::FILE* file = fdopen(descriptor, "rb");
  if (file == nullptr) close(descriptor);
  return file;
}

}  // namespace

std::FILE* OpenFileForReading(BSTR aName) noexcept {
  std::u16string_view name(aName, SysStringLen(aName));
  while (name.ends_with(u'\0')) name.remove_suffix(1);  // some callers include the terminating zero
  if (name.empty() || name.find(u'\0') != name.npos) return nullptr;
  try {
    return Open(name);
  } catch (...) {
    return nullptr;
  }
}

std::uint64_t FileSize(std::FILE* aFile) noexcept {
  if (fseeko(aFile, 0, SEEK_END) != 0) return 0;
  const off_t size = ftello(aFile);
  return size > 0 ? static_cast<std::uint64_t>(size) : 0;
}

bool SeekFile(std::FILE* aFile, std::uint64_t aPlace) noexcept {
  return aPlace <= INT64_MAX && fseeko(aFile, static_cast<off_t>(aPlace), SEEK_SET) == 0;
}
