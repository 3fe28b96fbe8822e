#include "shared/model/SceneCapture.h"

#include <cstring>
#include <utility>

void SceneCapture::SetPlaces(std::vector<Place> aPlaces) {
  const std::lock_guard lock(m_lock);
  m_places = std::move(aPlaces);
  SendPlaces();
}

void SceneCapture::SendPlaces() const {
  for (const Place& place : m_places) {
    place.viewer->SetClipRectangle(place.x * m_zoom, place.y * m_zoom, place.width * m_zoom,
                                   place.height * m_zoom);
  }
}

void SceneCapture::Zoom(int aZoom) {
  const std::lock_guard lock(m_lock);
  m_zoom = aZoom;
  SendPlaces();
}

std::future<std::optional<Picture>> SceneCapture::Take(int aZoom, const GLDATA_RGBA& aBackground) {
  std::promise<std::optional<Picture>> result;
  auto picture = result.get_future();
  {
    const std::lock_guard lock(m_lock);
    m_result = std::move(result);
  }
  GLCaptureRequest request;
  request.m_fZoom = static_cast<float>(aZoom);
  request.m_sBackground = aBackground;
  Request(m_pixmap.Get(), request);
  return picture;
}

HRESULT SceneCapture::IsEnabled(LONG* aEnabled) noexcept {
  GLCaptureBase::IsEnabled(aEnabled);
  m_taking = *aEnabled != 0;
  float zoom = 1;
  if (*aEnabled != 0) GetPixelZoom(&zoom);
  if (zoom != 1) Zoom(static_cast<int>(zoom));
  return S_OK;
}

HRESULT SceneCapture::OnData(LONG aSuccess) noexcept {
  Zoom(1);
  m_taking = false;
  std::optional<Picture> picture;
  int size = 0;
  GLDATA_RGBA4B* pixels = nullptr;
  if (aSuccess != 0 && SUCCEEDED(m_pixmap->AccessPixmapData(&size, &pixels))) {
    picture.emplace();
    m_pixmap->GetWidth(&picture->width);
    m_pixmap->GetHeight(&picture->height);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(pixels);
    picture->pixels.assign(bytes, bytes + std::size_t{4} * static_cast<unsigned>(size));
  }
  const std::lock_guard lock(m_lock);
  std::exchange(m_result, {}).set_value(std::move(picture));
  return S_OK;
}
