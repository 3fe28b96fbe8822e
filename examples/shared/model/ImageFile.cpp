// ImageFile: reads images of models. Any thread.

#include "shared/model/ImageFile.h"

#include <algorithm>
#include <cstdio>

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

GLPtr<IGLPixmap> ReadImage(const std::string& aPath) {
  Picture picture;
  if (ReadPng(aPath, picture)) return PixmapOf(picture);
  auto pixmap = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  if (FAILED(pixmap->LoadImageFile(GLString(aPath)))) return {};
  return pixmap;
}

std::string ForwardSlashes(std::string aPath) {
  std::replace(aPath.begin(), aPath.end(), '\\', '/');
  return aPath;
}

void ReportLostImage(const std::string& aName) {
  std::fprintf(stderr, "cannot read the texture %s\n", aName.c_str());
}
