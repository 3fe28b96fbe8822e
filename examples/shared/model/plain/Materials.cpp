// Materials: reads material files of OBJ models. One thread.

#include "shared/model/plain/Materials.h"

#include <algorithm>
#include <fstream>

#include "shared/model/ImageFile.h"
#include "shared/model/plain/LineReader.h"

namespace {

constexpr float kLargestShininess = 128;

void ReadColor(LineReader& aLine, GLDATA_RGBA& aColor) {
  aColor.m_fRed = aLine.Number();
  aColor.m_fGreen = aLine.Number();
  aColor.m_fBlue = aLine.Number();
}

}  // namespace

void Materials::Read(const std::string& aFile) {
  std::ifstream file(m_folder / ForwardSlashes(aFile), std::ios::binary);
  LineReader line(file);
  Material* material = nullptr;
  while (line.Next()) {
    const std::string_view keyword = line.Word();
    if (keyword == "newmtl") {
      material = &m_materials[line.Rest()];
      material->surface.diffuse = {0.6f, 0.6f, 0.6f, 1};  // default of the format
      material->surface.specular = {0, 0, 0, 1};
    } else if (material == nullptr) {
      continue;
    } else if (keyword == "Kd") {
      ReadColor(line, material->surface.diffuse);
    } else if (keyword == "Ks") {
      ReadColor(line, material->surface.specular);
    } else if (keyword == "Ns") {
      material->surface.shininess = std::clamp(line.Number() / kLargestShininess, 0.0f, 1.0f);
    } else if (keyword == "d") {
      material->surface.diffuse.m_fAlpha = line.Number();
    } else if (keyword == "Tr") {
      material->surface.diffuse.m_fAlpha = 1 - line.Number();
    } else if (keyword == "map_Kd") {
      material->image = Image(line.Rest());
    }
  }
}

const Materials::Material& Materials::Find(const std::string& aName) const {
  const auto found = m_materials.find(aName);
  return found != m_materials.end() ? found->second : m_default;
}

GLPtr<IGLPixmap> Materials::Image(const std::string& aName) {
  const auto [place, isNew] = m_images.try_emplace(aName);
  if (isNew) {
    place->second = ReadImage((m_folder / ForwardSlashes(aName)).string());
    if (!place->second) ReportLostImage(aName);
  }
  return place->second;
}
