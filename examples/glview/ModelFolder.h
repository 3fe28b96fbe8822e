// ModelFolder: the models in a folder in the order of their names, and the current one. Host's thread.

#pragma once

#include <string>
#include <vector>

class ModelFolder {
 public:
  ModelFolder() = default;
  /// Finds the files of a folder that have the extension of a model format. Does not search subfolders. The
  /// result is empty if the path is no folder.
  explicit ModelFolder(const std::string& aPath);

  bool IsEmpty() const { return m_models.empty(); }
  // The operations below require a folder that is not empty.

  /// Moves on by aBy models. The first model follows the last one.
  void Step(int aBy);
  const std::string& Model() const { return m_models[m_at]; }
  /// Returns the position of the current model, as "2 of 7".
  std::string Place() const;

 private:
  std::vector<std::string> m_models;
  std::size_t m_at = 0;
};
