// ModelFolder: lists the models of a folder. Host's thread.

#include "glview/ModelFolder.h"

#include <algorithm>
#include <filesystem>

#include "shared/model/ModelReader.h"

ModelFolder::ModelFolder(const std::string& aPath) {
  std::error_code error;
  std::filesystem::directory_iterator entry(aPath, error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    std::error_code unknown;
    if (entry->is_regular_file(unknown) && IsModelName(entry->path().filename().string())) {
      m_models.push_back(entry->path().string());
    }
  }
  std::sort(m_models.begin(), m_models.end());
}

void ModelFolder::Step(int aBy) {
  const auto count = static_cast<int>(m_models.size());
  m_at = static_cast<std::size_t>(((static_cast<int>(m_at) + aBy) % count + count) % count);
}

std::string ModelFolder::Place() const {
  return std::to_string(m_at + 1) + " of " + std::to_string(m_models.size());
}
