// Materials: surfaces and images by name, from the material files of OBJ models. One thread, while a model is
// read.

#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <utility>

#include "shared/model/Model.h"

class Materials {
 public:
  struct Material {
    Surface surface;
    GLPtr<IGLPixmap> image;
  };

  explicit Materials(std::filesystem::path aFolder) : m_folder(std::move(aFolder)) {}

  /// Reads a material file. If the file is missing, its materials keep their defaults.
  /// @throws ModelError if a number in it is invalid
  void Read(const std::string& aFile);

  /// Returns the material of a name; the default material if there is none.
  const Material& Find(const std::string& aName) const;

 private:
  GLPtr<IGLPixmap> Image(const std::string& aName);

  const std::filesystem::path m_folder;
  const Material m_default;
  std::map<std::string, Material> m_materials;
  std::map<std::string, GLPtr<IGLPixmap>> m_images;  // by name; null for unreadable images
};
