// Images: reads the images of a model, from files or from the model. One thread.

#include "shared/model/assimp/Images.h"

#include <assimp/scene.h>

#include <utility>

#include "shared/Picture.h"
#include "shared/model/ImageFile.h"

Images::Images(const aiScene& aScene, std::filesystem::path aFolder)
    : m_scene(aScene), m_folder(std::move(aFolder)) {}

GLPtr<IGLPixmap> Images::Find(const std::string& aName) {
  const auto found = m_read.find(aName);
  if (found != m_read.end()) return found->second;
  auto image = Read(aName);
  if (!image) ReportLostImage(aName);
  return m_read.emplace(aName, std::move(image)).first->second;
}

GLPtr<IGLPixmap> Images::Read(const std::string& aName) const {
  Picture picture;
  if (const aiTexture* inside = m_scene.GetEmbeddedTexture(aName.c_str())) {
    // A height of 0 marks an encoded file; the width is its length in bytes.
    const bool read = inside->mHeight == 0 && ReadPng(inside->pcData, inside->mWidth, picture);
    return read ? PixmapOf(picture) : GLPtr<IGLPixmap>();
  }
  return ReadImage((m_folder / ForwardSlashes(aName)).string());
}
