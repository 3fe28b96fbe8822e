// Scene: picking. Host's thread; it waits for the draw thread.

#include <algorithm>

#include "shared/model/Scene.h"

namespace {

/// Offset from a pixel's corner to its middle. A box uses the edges of pixels, a point the middle.
constexpr double kMiddle = 0.5;

}  // namespace

Scene::View& Scene::ViewAt(const GLPixelPlace& aPixel) {
  const auto viewer = GLViewerAt(*m_context.Get(), aPixel);
  const auto is = [&](const View& aView) { return aView.viewer == viewer.Get(); };
  const auto found = std::find_if(m_views.begin(), m_views.end(), is);
  return found != m_views.end() ? *found : m_views.front();
}

void Scene::ShowBand(const std::optional<PixelBox>& aBox) {
  for (View& view : m_views) view.overlay->SetBand(std::nullopt);
  if (aBox) {
    const View& view = ViewAt(GLMiddleOfPixel(aBox->x1, aBox->y1));
    const GLViewGeometry geometry = GeometryOf(view);
    const auto place = [&](int aX, int aY) {
      return geometry.SelectPoint({static_cast<double>(aX), static_cast<double>(aY)});
    };
    view.overlay->SetBand(Band{place(aBox->x1, aBox->y1), place(aBox->x2, aBox->y2)});
  }
  Redraw();
}

std::vector<ULONG> Scene::Pick(const PixelBox& aBox) {
  const View& view = ViewAt(GLMiddleOfPixel(aBox.x1, aBox.y1));
  const GLViewGeometry geometry = GeometryOf(view);
  const double shift = aBox.point ? kMiddle : 0;
  GLDATA_POINT from = geometry.SelectPoint({aBox.x1 + shift, aBox.y1 + shift});
  GLDATA_POINT to = geometry.SelectPoint({aBox.x2 + shift, aBox.y2 + shift});
  // One hit for each part, and one for objects without an identifier.
  int count = static_cast<int>(m_model->parts.size()) + 1;
  std::vector<ULONG> ids(static_cast<std::size_t>(count));
  if (FAILED(m_context->Select(view.viewer, &from, &to, aBox.point ? 1 : 0, aBox.inside ? 1 : 0, &count,
                               ids.data()))) {
    return {};
  }
  ids.resize(static_cast<std::size_t>(count));
  std::sort(ids.begin(), ids.end());
  return ids;
}

void Scene::Mark(const std::vector<ULONG>& aIds) {
  m_painter->SetMarked(aIds);
  Redraw();
}

std::vector<std::string> Scene::NamesOf(const std::vector<ULONG>& aIds) const {
  std::vector<std::string> names;
  for (const ULONG id : aIds) {
    if (const Part* part = m_model->Find(id)) names.push_back(part->name);
  }
  return names;
}
