#include "shared/model/Images.h"

#include <assimp/scene.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "shared/Picture.h"

namespace {

GLPtr<IGLPixmap> PixmapOf(const Picture& aPicture) {
  auto pixmap = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  int size = 0;
  GLDATA_RGBA4B* pixels = nullptr;
  if (FAILED(pixmap->Initialize(aPicture.width, aPicture.height, {})) ||
      FAILED(pixmap->AccessPixmapData(&size, &pixels))) {
    return {};
  }
  std::copy(aPicture.pixels.begin(), aPicture.pixels.end(), reinterpret_cast<std::uint8_t*>(pixels));
  return pixmap;
}

GLPtr<IGLPixmap> ReadBitmap(const std::string& aPath) {
  auto pixmap = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  if (FAILED(pixmap->LoadImageFile(GLString(aPath)))) return {};
  return pixmap;
}

}  // namespace

Images::Images(const aiScene& aScene, std::filesystem::path aFolder)
    : m_scene(aScene), m_folder(std::move(aFolder)) {}

GLPtr<IGLPixmap> Images::Find(const std::string& aName) {
  const auto found = m_read.find(aName);
  if (found != m_read.end()) return found->second;
  auto image = Read(aName);
  if (!image) std::fprintf(stderr, "glview: can't read the texture %s\n", aName.c_str());
  return m_read.emplace(aName, std::move(image)).first->second;
}

GLPtr<IGLPixmap> Images::Read(const std::string& aName) const {
  Picture picture;
  if (const aiTexture* inside = m_scene.GetEmbeddedTexture(aName.c_str())) {
    // A height of 0 tells that the block is a file and the width its length.
    const bool read = inside->mHeight == 0 && ReadPng(inside->pcData, inside->mWidth, picture);
    return read ? PixmapOf(picture) : GLPtr<IGLPixmap>();
  }
  std::string name = aName;
  std::replace(name.begin(), name.end(), '\\', '/');
  const std::string path = (m_folder / name).string();
  return ReadPng(path, picture) ? PixmapOf(picture) : ReadBitmap(path);
}
