// Bitmap files on disk for a test, and the loading of them through the interface.

#pragma once

#include <gllib/IGLPixmap.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "support/BitmapBytes.h"

/// Loads the file of a name.
inline HRESULT LoadFrom(IGLPixmap& aPixmap, const std::u16string& aName) {
  const BSTR text =
      SysAllocStringLen(reinterpret_cast<const OLECHAR*>(aName.data()), static_cast<unsigned>(aName.size()));
  const HRESULT result = aPixmap.LoadImageFile(text);
  SysFreeString(text);
  return result;
}

/// A folder that goes with the test.
class TestFolder {
 public:
  TestFolder() {
    std::random_device number;
    do {
      m_Path = std::filesystem::temp_directory_path() / ("gllib-" + std::to_string(number()));
    } while (!std::filesystem::create_directory(m_Path));
  }
  ~TestFolder() { std::filesystem::remove_all(m_Path); }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::filesystem::path& Path() const { return m_Path; }
  /// The name of a file in it.
  std::u16string Name(const std::u16string& aName) const { return (m_Path / aName).u16string(); }
  /// Makes a file. @return its whole name
  std::u16string Write(const std::u16string& aName, const Bytes& aBytes) const {
    const std::filesystem::path path = m_Path / aName;
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(aBytes.data()), static_cast<std::streamsize>(aBytes.size()));
    return path.u16string();
  }

 private:
  std::filesystem::path m_Path;
};
