// SceneCapture: requests a picture and waits for it. Host's thread.

#include "shared/model/SceneCapture.h"

SceneCapture::SceneCapture(GLViewing& aViewing, int aZoom, const GLDATA_RGBA& aBackground)
    : m_pixmap(GLCreate<IGLPixmap>(CLSID_GLPixmap)) {
  GLCaptureRequest request;
  request.m_fZoom = static_cast<float>(aZoom);
  request.m_sBackground = aBackground;
  m_taken = aViewing.TakePicture(m_pixmap.Get(), request);
}

std::optional<Picture> SceneCapture::Take() {
  int size = 0;
  GLDATA_RGBA4B* pixels = nullptr;
  if (!m_taken.get() || FAILED(m_pixmap->AccessPixmapData(&size, &pixels))) return std::nullopt;
  Picture picture;
  m_pixmap->GetWidth(&picture.width);
  m_pixmap->GetHeight(&picture.height);
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(pixels);
  picture.pixels.assign(bytes, bytes + std::size_t{4} * static_cast<unsigned>(size));
  return picture;
}
