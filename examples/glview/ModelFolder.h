// ModelFolder: the models in a folder, in the order of their names, and the one among them that is shown. The
// host's thread.

#pragma once

#include <string>
#include <vector>

class ModelFolder {
 public:
  ModelFolder() = default;
  /// Finds the files in a folder whose names are those of models; not in the folders in it. None when the
  /// path is no folder.
  explicit ModelFolder(const std::string& aPath);

  bool IsEmpty() const { return m_models.empty(); }
  /// Goes on; after the last model comes the first.
  void Step(int aBy);
  const std::string& Model() const { return m_models[m_at]; }
  /// The model's place among the others, as "2 of 7".
  std::string Place() const;

 private:
  std::vector<std::string> m_models;
  std::size_t m_at = 0;
};
