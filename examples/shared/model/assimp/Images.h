// Images: the image files that a model names, each read once. One thread, while a model is read.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <filesystem>
#include <map>
#include <string>

struct aiScene;

class Images {
 public:
  /// @param aFolder where the model's own paths start
  Images(const aiScene& aScene, std::filesystem::path aFolder);

  /// The image that a material names: a PNG or bitmap file, or a PNG inside the model. One that can't be read
  /// is told of on standard error, once.
  /// @return null when it can't be read
  GLPtr<IGLPixmap> Find(const std::string& aName);

 private:
  GLPtr<IGLPixmap> Read(const std::string& aName) const;

  const aiScene& m_scene;
  std::filesystem::path m_folder;
  std::map<std::string, GLPtr<IGLPixmap>> m_read;
};
