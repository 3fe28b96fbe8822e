// Measuring: computes and draws distances and angles.

#include "shared/model/Measuring.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr float kPointSize = 7.0f, kLineWidth = 2.0f;
constexpr double kTextShift = 8;  // pixels from the point

std::string TextOf(const std::vector<GLDATA_POINT>& aPoints) {
  using namespace GLVector;
  if (aPoints.size() < 2) return {};
  char text[48];
  const GLDATA_POINT a = Difference(aPoints[0], aPoints[1]);
  if (aPoints.size() == 2) {
    std::snprintf(text, sizeof(text), "%.5g", Length(a));
    return text;
  }
  const GLDATA_POINT b = Difference(aPoints[2], aPoints[1]);
  std::snprintf(text, sizeof(text), "%.1f deg", std::atan2(Length(Cross(a, b)), Dot(a, b)) * 180 / kPi);
  return text;
}

}  // namespace

void Measuring::Add(const GLDATA_POINT& aPoint) {
  const std::lock_guard lock(m_lock);
  if (m_points.size() == 3) m_points.clear();
  m_points.push_back(aPoint);
}

void Measuring::Clear() {
  const std::lock_guard lock(m_lock);
  m_points.clear();
}

std::vector<GLDATA_POINT> Measuring::Points() const {
  const std::lock_guard lock(m_lock);
  return m_points;
}

std::string Measuring::Text() const { return TextOf(Points()); }

void Measuring::Draw(IGLCanvas& aCanvas, IGLContext& aContext, int aScale) {
  const auto points = Points();
  if (points.empty()) return;
  {
    const GLOverlay overlay;
    glColor4f(1.0f, 0.85f, 0.2f, 1.0f);
    glLineWidth(kLineWidth * static_cast<float>(aScale));
    glPointSize(kPointSize * static_cast<float>(aScale));
    for (const GLenum mode : {GLenum{GL_LINE_STRIP}, GLenum{GL_POINTS}}) {
      glBegin(mode);
      for (const GLDATA_POINT& point : points) glVertex3d(point.x, point.y, point.z);
      glEnd();
    }
  }
  if (points.size() < 2) return;
  const GLOverlay overlay(GLOverlayUnits::Pixels, aScale);
  // A distance is printed beside the middle of its line, an angle beside its vertex.
  const auto place = overlay.PlaceOf(
      aCanvas, points.size() == 3 ? points[1] : GLVector::Scaled(GLVector::Sum(points[0], points[1]), 0.5));
  if (!place) return;
  glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
  m_text.Print(aContext, GLString(TextOf(points)), {place->x + kTextShift, place->y - kTextShift, 0}, aScale);
}
