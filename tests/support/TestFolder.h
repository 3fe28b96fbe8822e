// A folder that goes with the test, and the files in it.

#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

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
  /// Makes a file of text or bytes. @return its whole name
  template <class Content>
  std::u16string Put(const std::filesystem::path& aName, const Content& aContent) const {
    std::ofstream(m_Path / aName, std::ios::binary)
        .write(reinterpret_cast<const char*>(std::data(aContent)), std::ssize(aContent));
    return (m_Path / aName).u16string();
  }
  std::string Get(const std::filesystem::path& aName) const {
    std::ifstream file(m_Path / aName, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::filesystem::path m_Path;
};
