// Scene: navigation. Each view moves independently. The points to turn and zoom about are read from the depth
// buffer. Host's thread.

#include <cmath>

#include "shared/model/Scene.h"

namespace {

constexpr double kTurnPerPixel = 0.5 * GLVector::kPi / 180;
constexpr double kMargin = 1.04;      // distance factor that keeps the model off the edges
constexpr double kDepth = 1.1;        // visible depth in front of and behind the centre, in radii
constexpr double kWalkedDepth = 100;  // largest distance at which the model is drawn, in radii
constexpr auto kPatience = std::chrono::seconds(2);

double Seconds(std::chrono::steady_clock::duration aDuration) {
  return std::chrono::duration<double>(aDuration).count();
}

}  // namespace

std::optional<GLDATA_POINT> Scene::PointHit(int aX, int aY) {
  if (m_model->parts.empty()) return std::nullopt;
  const GLPixelPlace pixel = GLMiddleOfPixel(aX, aY);
  auto point = m_viewing->PointUnder(*ViewAt(pixel).viewer, pixel);
  if (point.wait_for(kPatience) != std::future_status::ready) return std::nullopt;
  return point.get();
}

GLDATA_POINT Scene::PointUnder(int aX, int aY) {
  const GLPixelPlace pixel = GLMiddleOfPixel(aX, aY);
  const auto hit = PointHit(aX, aY);
  return hit ? *hit : GeometryOf(ViewAt(pixel)).Ray(pixel).ClosestTo(m_model->centre);
}

bool Scene::Shows(const GLDATA_POINT& aPoint, const GLPixelPlace& aPixel) {
  const auto seen = GeometryOf(ViewAt(aPixel)).PixelOf(aPoint);
  return seen && std::hypot(seen->m_sPixel.x - aPixel.x, seen->m_sPixel.y - aPixel.y) < 1;
}

void Scene::Send(const View& aView, GLViewGeometry aGeometry) {
  GLFitDepth(aGeometry, m_model->centre, kDepth * m_model->radius);
  aGeometry.Apply(*aView.viewer);
}

void Scene::Turn(const GLPixelPlace& aFrom, const GLPixelPlace& aTo, const GLPixelPlace& aView,
                 const GLDATA_POINT& aPivot) {
  const View& view = ViewAt(aView);
  // A view of fixed direction is panned instead of turned.
  if (view.direction != Direction::Free) return Pan(aTo, aView, aPivot);
  GLViewGeometry geometry = GeometryOf(view);
  GLOrbit(geometry, aPivot, (aFrom.x - aTo.x) * kTurnPerPixel, (aTo.y - aFrom.y) * kTurnPerPixel);
  Send(view, geometry);
  Refresh();
}

void Scene::Spin(double aRight) {
  const View& view = m_views.front();
  GLViewGeometry geometry = GeometryOf(view);
  GLOrbit(geometry, m_model->centre, aRight, 0);
  Send(view, geometry);
  Refresh();
}

void Scene::Pan(const GLPixelPlace& aTo, const GLPixelPlace& aView, const GLDATA_POINT& aPoint) {
  const View& view = ViewAt(aView);
  GLViewGeometry geometry = GeometryOf(view);
  GLPan(geometry, aPoint, aTo);
  Send(view, geometry);
  Refresh();
}

void Scene::Zoom(const GLPixelPlace& aView, const GLDATA_POINT& aPoint, double aFactor) {
  const View& view = ViewAt(aView);
  GLViewGeometry geometry = GeometryOf(view);
  // Limits the zoom to sizes between a dot and a small part of the model.
  const double size = geometry.m_bOrtho
                          ? geometry.HalfExtents()[1]
                          : GLVector::Length(GLVector::Difference(aPoint, geometry.m_Eye.m_sOrigin));
  const double share = size * aFactor / m_model->radius;
  if (share < 1e-4 || share > 1e4) return;
  GLZoom(geometry, aPoint, aFactor);
  Send(view, geometry);
  Refresh();
}

void Scene::Walk(double aForward, double aUp, double aLeft) {
  m_transition.reset();
  const View& view = m_views.front();
  GLViewGeometry geometry = GeometryOf(view);
  GLLook(geometry, aLeft, 0);
  GLWalk(geometry, 0, aUp * m_model->radius, aForward * m_model->radius);
  const GLDATA_POINT& eye = geometry.m_Eye.m_sOrigin;
  if (GLVector::Length(GLVector::Difference(eye, m_model->centre)) > kWalkedDepth * m_model->radius) return;
  Send(view, geometry);
  Refresh();
}

void Scene::GoTo(GLStandardView aDirection) {
  const View& view = m_views.front();
  const GLViewGeometry from = GeometryOf(view);
  GLViewGeometry to = from;
  GLTurnTo(to, aDirection);
  GLFitBall(to, m_model->centre, m_model->radius, kMargin);
  m_transition.emplace(from, to, m_model->centre, kDepth * m_model->radius);
  m_transitionStart = Clock::now();
}

void Scene::Animate() {
  if (!m_transition) return;
  const double seconds = Seconds(Clock::now() - m_transitionStart);
  Send(m_views.front(), m_transition->At(seconds));
  if (m_transition->IsOver(seconds)) m_transition.reset();
  Refresh();
}

GLViewGeometry Scene::FirstGeometry(const View& aView) const {
  GLViewGeometry geometry = GeometryOf(aView);
  switch (aView.direction) {
    case Direction::Free:
      GLTurnTo(geometry, GLStandardView::Front);
      GLOrbit(geometry, m_model->centre, m_yaw, m_pitch);
      break;
    case Direction::Front:
      GLTurnTo(geometry, GLStandardView::Front);
      break;
    case Direction::Right:
      GLTurnTo(geometry, GLStandardView::Right);
      break;
    case Direction::Top:
      GLTurnTo(geometry, GLStandardView::Top);
      break;
  }
  GLFitBall(geometry, m_model->centre, m_model->radius, kMargin);
  return geometry;
}

void Scene::ResetCamera() {
  m_transition.reset();
  for (const View& view : m_views) Send(view, FirstGeometry(view));
  Refresh();
}
