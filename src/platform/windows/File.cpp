// Reading of files, on Windows. Any thread.

#include "platform/File.h"

#include <string>

std::FILE* OpenFileForReading(BSTR aName) noexcept {
  std::wstring_view name(aName, SysStringLen(aName));
  while (name.ends_with(L'\0')) name.remove_suffix(1);  // some callers include the terminating zero
  if (name.empty() || name.find(L'\0') != name.npos) return nullptr;
  return _wfopen(aName, L"rb");
}

std::uint64_t FileSize(std::FILE* aFile) noexcept {
  if (_fseeki64(aFile, 0, SEEK_END) != 0) return 0;
  const auto size = _ftelli64(aFile);
  return size > 0 ? static_cast<std::uint64_t>(size) : 0;
}

bool SeekFile(std::FILE* aFile, std::uint64_t aPlace) noexcept {
  return aPlace <= INT64_MAX && _fseeki64(aFile, static_cast<std::int64_t>(aPlace), SEEK_SET) == 0;
}
