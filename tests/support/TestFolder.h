// TestFolder: a temporary folder of a test, and its files.

#pragma once

#include <string_view>
#include <system_error>

#include "support/Test.h"

class TestFolder {
 public:
  TestFolder() {
    std::random_device number;
    do {
      m_Path = std::filesystem::temp_directory_path() / ("gllib-" + std::to_string(number()));
    } while (!std::filesystem::create_directory(m_Path));
  }
  ~TestFolder() {
    std::error_code stays;  // a file that another process still uses
    std::filesystem::remove_all(m_Path, stays);
  }
  TestFolder(TestFolder&&) = delete;

  const std::filesystem::path& Path() const { return m_Path; }
  std::string operator/(const std::string& aName) const { return (m_Path / aName).string(); }
  /// Writes a file. @return its path
  std::filesystem::path Put(const std::filesystem::path& aName, std::string_view aText) const {
    std::ofstream(m_Path / aName, std::ios::binary) << aText;
    return m_Path / aName;
  }
  std::filesystem::path Put(const std::filesystem::path& aName,
                            const std::vector<std::uint8_t>& aBytes) const {
    return Put(aName, std::string_view(reinterpret_cast<const char*>(aBytes.data()), aBytes.size()));
  }
  std::string Get(const std::filesystem::path& aName) const {
    std::ifstream file(m_Path / aName, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::filesystem::path m_Path;
};
