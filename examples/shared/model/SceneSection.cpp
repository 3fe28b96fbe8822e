// Scene: the section plane with its slider, and measuring. Host's thread.

#include "shared/model/Scene.h"

void Scene::SetSection(const Section& aSection) {
  m_section = aSection;
  m_section.share = std::clamp(m_section.share, 0.0, 1.0);
  m_painter->SetSection(m_section);
  m_views.front().overlay->SetSection(m_section);
  Redraw();
}

bool Scene::IsOnSlider(const GLPixelPlace& aPixel) const {
  const GLPixelRectangle view = GeometryOf(m_views.front()).m_sVisible;
  const double x = aPixel.x - view.m_iX, y = aPixel.y - (m_height - view.m_iY - view.m_iHeight);
  return m_section.IsOn() && SectionSlider::In(view.m_iWidth, view.m_iHeight).Holds(x, y);
}

void Scene::DragSlider(const GLPixelPlace& aPixel) {
  const GLPixelRectangle view = GeometryOf(m_views.front()).m_sVisible;
  const double y = aPixel.y - (m_height - view.m_iY - view.m_iHeight);
  SetSection({m_section.axis, SectionSlider::In(view.m_iWidth, view.m_iHeight).ShareAt(y)});
}

bool Scene::MeasureAt(int aX, int aY) {
  const auto point = PointHit(aX, aY);
  if (point) m_measure.Add(*point);
  Redraw();
  return point.has_value();
}

void Scene::EndMeasuring() {
  m_measure.Clear();
  Redraw();
}
