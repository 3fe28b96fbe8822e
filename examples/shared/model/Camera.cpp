#include "shared/model/Camera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kFieldOfView = 30.0;  // degrees, across the shorter side
constexpr double kMargin = 1.04;       // of the framed sphere, so that it doesn't touch the edge
constexpr double kLargestPitch = kPi / 2;

double HalfFieldOfView() { return kFieldOfView / 2 * kPi / 180; }

}  // namespace

Camera::Camera(const GLDATA_POINT& aCentre, double aRadius)
    : m_system(GLCreate<IGLCoord>(CLSID_GLCoord)), m_centre(aCentre), m_target(aCentre), m_radius(aRadius) {}

void Camera::Turn(double aYaw, double aPitch) {
  m_yaw = std::remainder(m_yaw + aYaw, 2 * kPi);
  m_pitch = std::clamp(m_pitch + aPitch, -kLargestPitch, kLargestPitch);
}

void Camera::Pan(Direction aDirection, double aRight, double aUp) {
  const double side = 2 * kMargin * m_radius * m_zoom;  // what the shorter side spans at the target
  Aim(aDirection);
  m_system->MoveRight(-aRight * side);
  m_system->MoveUp(-aUp * side);
  m_system->GetOrigin(&m_target);
}

void Camera::Zoom(double aFactor) { m_zoom = std::clamp(m_zoom * aFactor, 1e-3, 1e3); }

double Camera::Distance() const { return kMargin * m_radius * m_zoom / std::sin(HalfFieldOfView()); }

void Camera::Aim(Direction aDirection) const {
  double yaw = 0;
  double pitch = 0;
  if (aDirection == Direction::Free) {
    yaw = m_yaw;
    pitch = m_pitch;
  } else if (aDirection == Direction::Right) {
    yaw = kPi / 2;
  } else if (aDirection == Direction::Top) {
    pitch = kPi / 2;
  }
  m_system->ResetRotation();
  m_system->SetOrigin3d(m_target.x, m_target.y, m_target.z);
  m_system->RotateAboutY_RAD(yaw);
  m_system->RotateAboutX_RAD(-pitch);
}

void Camera::Apply(IGLViewer& aViewer, Direction aDirection, double aAspect) const {
  const double distance = Distance();
  Aim(aDirection);
  m_system->MoveForward(-distance);
  GLDATA_MATRIX6D placement;
  m_system->GetMatrix6d(&placement);
  GLPtr<IGLCoord> eye;
  aViewer.GetCoord(eye.Put());
  eye->SetMatrix6d(&placement);

  // Everything lies within this depth of the target, also when that has been moved off the centre.
  const double depth =
      1.1 * m_radius + std::hypot(m_target.x - m_centre.x, m_target.y - m_centre.y, m_target.z - m_centre.z);
  const double half = kMargin * m_radius * m_zoom;
  GLDATA_POINT low{-half, -half, distance - depth};
  GLDATA_POINT high{half, half, distance + depth};
  aViewer.SetOrthoExtents(&low, &high);

  // The field of view counts in the vertical; a tall view widens it so that the shorter side keeps its own.
  const double vertical = 2 * std::atan(std::tan(HalfFieldOfView()) / std::min(aAspect, 1.0));
  aViewer.SetEyeFovy_DEG(vertical * 180 / kPi);
  aViewer.SetEyeZNearAndFar(std::max(distance - depth, distance / 500), distance + depth);
}
