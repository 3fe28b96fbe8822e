// Materials: surfaces and images by name, from the material files that OBJ models name. One thread, while a
// model is read.

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

  /// Reads a material file; one that is missing leaves its materials at their defaults.
  /// @throws ModelError when a number in it is none
  void Read(const std::string& aFile);

  /// The material of a name, or one that suits a model without materials.
  const Material& Find(const std::string& aName) const;

 private:
  GLPtr<IGLPixmap> Image(const std::string& aName);

  const std::filesystem::path m_folder;
  const Material m_default;
  std::map<std::string, Material> m_materials;
  std::map<std::string, GLPtr<IGLPixmap>> m_images;  // by name; null for one that can't be read
};
