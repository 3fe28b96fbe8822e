// Images: the images of a model, each read once. One thread, while a model is read.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLLibHost.h>

#include <filesystem>
#include <map>
#include <string>

struct aiScene;

class Images {
 public:
  /// @param aFolder base folder of the model's relative paths
  Images(const aiScene& aScene, std::filesystem::path aFolder);

  /// Returns the image that a material names: a PNG or bitmap file, or a PNG inside the model. Reports an
  /// image that cannot be read once, on standard error.
  /// @return null if the image cannot be read
  GLPtr<IGLPixmap> Find(const std::string& aName);

 private:
  GLPtr<IGLPixmap> Read(const std::string& aName) const;

  const aiScene& m_scene;
  std::filesystem::path m_folder;
  std::map<std::string, GLPtr<IGLPixmap>> m_read;
};
