/// @file
/// Navigation, header only: orbit, pan, zoom, fit, standard views with transitions, and first-person
/// movement, in perspective and parallel projection. Functions change a GLViewGeometry. The host reads it
/// from a viewer and applies it afterwards:
///
///     GLViewGeometry view = GLViewGeometry::Of(context, viewer);
///     GLOrbit(view, pivot, 0.01 * right, 0.01 * down);
///     view.Apply(viewer);
///
/// Plain values; any thread.

#pragma once

#include <gllib/GLViewMath.h>

#include <utility>

/// Default upward axis of orbit and look.
inline constexpr GLDATA_POINT GLUpward = {0, 1, 0};

/// Rotates the eye about a pivot. The pivot keeps its pixel exactly.
/// @param aView  the view to change
/// @param aPivot a world point, for example the one under the mouse
/// @param aRight radians about the upward axis; positive moves the eye to the right
/// @param aUp    radians about the eye's horizontal axis; positive moves the eye up, at most to the pole
/// @param aUpward the upward axis through the pivot; of length 1
inline void GLOrbit(GLViewGeometry& aView, const GLDATA_POINT& aPivot, double aRight, double aUp,
                    const GLDATA_POINT& aUpward = GLUpward) noexcept {
  using namespace GLVector;
  GLEye& eye = aView.m_Eye;
  // An upright eye stops above and below the pivot. A tilted eye has no pole.
  constexpr double kUpright = 1e-6;
  if (std::abs(Dot(eye.m_sRight, aUpward)) < kUpright) {
    const double elevation = std::atan2(Dot(eye.m_sBack, aUpward), Dot(eye.m_sUp, aUpward));
    aUp = std::clamp(elevation + aUp, (std::min)(elevation, -kPi / 2), (std::max)(elevation, kPi / 2)) -
          elevation;
  }
  const auto turned = [&](const GLDATA_POINT& aVector) {
    return Turned(Turned(aVector, eye.m_sRight, -aUp), aUpward, aRight);
  };
  // The pivot keeps its position in the eye's system, and therefore its pixel.
  const GLDATA_POINT pivot = eye.PointToEye(aPivot);
  GLEye result = {{}, Unit(turned(eye.m_sRight)), {}, turned(eye.m_sBack)};
  result.m_sUp = Unit(Cross(result.m_sBack, result.m_sRight));
  result.m_sBack = Cross(result.m_sRight, result.m_sUp);
  result.m_sOrigin = Difference(aPivot, result.VectorToWorld(pivot));
  eye = result;
}

/// Moves the eye parallel to the screen so that a world point appears at a position in the window.
/// @param aView  the view to change
/// @param aPoint for example the point under the mouse at the start of the drag
/// @param aPixel current position of the mouse
inline void GLPan(GLViewGeometry& aView, const GLDATA_POINT& aPoint, const GLPixelPlace& aPixel) noexcept {
  using namespace GLVector;
  const GLDATA_POINT shift = Difference(aPoint, aView.PointInPlaneOf(aPoint, aPixel));
  aView.m_Eye.m_sOrigin = Sum(aView.m_Eye.m_sOrigin, shift);
}

/// Zooms in or out. A world point, usually the one under the cursor, keeps its pixel.
/// @param aView   the view to change
/// @param aPoint  a perspective eye moves towards it or away from it; it must not be the eye's position
/// @param aFactor factor of the distance in perspective, of the extents in parallel projection; greater than
///                0. Below 1 zooms in
inline void GLZoom(GLViewGeometry& aView, const GLDATA_POINT& aPoint, double aFactor) noexcept {
  using namespace GLVector;
  GLEye& eye = aView.m_Eye;
  if (!aView.m_bOrtho) {
    eye.m_sOrigin = Sum(aPoint, Scaled(Difference(eye.m_sOrigin, aPoint), aFactor));
    return;
  }
  const GLDATA_POINT p = eye.PointToEye(aPoint);
  eye.m_sOrigin = Sum(eye.m_sOrigin, eye.VectorToWorld({p.x * (1.0 - aFactor), p.y * (1.0 - aFactor), 0}));
  aView.m_sOrthoMin = {aView.m_sOrthoMin.x * aFactor, aView.m_sOrthoMin.y * aFactor, aView.m_sOrthoMin.z};
  aView.m_sOrthoMax = {aView.m_sOrthoMax.x * aFactor, aView.m_sOrthoMax.y * aFactor, aView.m_sOrthoMax.z};
}

/// Moves the eye along its axes, in world units. Forward is visible in perspective only.
inline void GLWalk(GLViewGeometry& aView, double aRight, double aUp, double aForward) noexcept {
  GLEye& eye = aView.m_Eye;
  eye.m_sOrigin = eye.PointToWorld({aRight, aUp, -aForward});
}

/// Rotates the eye about its position.
/// @param aView the view to change
/// @param aLeft radians about the upward axis; positive looks to the left
/// @param aUp   radians; positive looks up, at most straight up
/// @param aUpward the upward axis, of length 1
inline void GLLook(GLViewGeometry& aView, double aLeft, double aUp,
                   const GLDATA_POINT& aUpward = GLUpward) noexcept {
  const GLDATA_POINT place = aView.m_Eye.m_sOrigin;
  GLOrbit(aView, place, aLeft, -aUp, aUpward);
  aView.m_Eye.m_sOrigin = place;
}

/// Sets near and far plane so that a ball is between them. Call it after each movement.
/// @param aView   the view to change
/// @param aCentre centre of the ball
/// @param aRadius radius of the ball, greater than 0. In perspective the distance of the near plane is at
///                least 1/1000 of that of the far plane
inline void GLFitDepth(GLViewGeometry& aView, const GLDATA_POINT& aCentre, double aRadius) noexcept {
  const double distance = -aView.m_Eye.PointToEye(aCentre).z;
  aView.m_sOrthoMin.z = distance - aRadius;
  aView.m_sOrthoMax.z = distance + aRadius;
  aView.m_dFar = (std::max)(distance + aRadius, aRadius);
  aView.m_dNear = (std::max)(distance - aRadius, aView.m_dFar / 1000.0);
}

/// Centres a ball in the view, as large as fits. The view direction does not change.
/// @param aView   the view to change
/// @param aCentre centre of the ball
/// @param aRadius radius of the ball, greater than 0
/// @param aMargin 1 lets the ball touch the edge; 1.1 adds a margin of a tenth
/// @return true; false in a perspective with a field of view of 0 (nothing changes)
inline bool GLFitBall(GLViewGeometry& aView, const GLDATA_POINT& aCentre, double aRadius,
                      double aMargin = 1.04) noexcept {
  using namespace GLVector;
  GLViewGeometry perspective = aView;
  perspective.m_bOrtho = false;
  const auto [tangentX, tangentY] = perspective.HalfExtents();
  const double tangent = (std::min)(tangentX, tangentY);
  // In parallel projection the eye gets the same position as in perspective, so that hosts can switch the
  // projection.
  double distance = aRadius * aMargin / std::sin(std::atan(tangent));
  if (!std::isfinite(tangent) || !std::isfinite(distance)) {
    if (!aView.m_bOrtho) return false;
    distance = 4.0 * aRadius;
  }
  const double half = aRadius * aMargin;
  aView.m_sOrthoMin = {-half, -half, aView.m_sOrthoMin.z};
  aView.m_sOrthoMax = {half, half, aView.m_sOrthoMax.z};
  aView.m_Eye.m_sOrigin = Sum(aCentre, Scaled(aView.m_Eye.m_sBack, distance));
  GLFitDepth(aView, aCentre, 1.01 * aRadius);
  return true;
}

/// Centres a box in the view, as large as its eight corners fit. The view direction does not change.
/// @param aView      the view to change
/// @param aMin, aMax two opposite corners; they must differ
/// @param aMargin    as at GLFitBall
/// @return true; false in a perspective with a field of view of 0, and in parallel projection for a line
///         along the view direction (nothing changes)
inline bool GLFitBox(GLViewGeometry& aView, const GLDATA_POINT& aMin, const GLDATA_POINT& aMax,
                     double aMargin = 1.04) noexcept {
  using namespace GLVector;
  const GLDATA_POINT centre = Scaled(Sum(aMin, aMax), 0.5);
  const double radius = Length(Difference(aMax, aMin)) * 0.5;
  GLViewGeometry fitted = aView;
  if (!GLFitBall(fitted, centre, radius, aMargin)) return false;
  // Extents of the corners to both sides, per axis; in perspective combined with their depth.
  const auto [halfX, halfY] = fitted.HalfExtents();
  const double slopeX = fitted.m_bOrtho ? 0.0 : halfX / aMargin;
  const double slopeY = fitted.m_bOrtho ? 0.0 : halfY / aMargin;
  double right = -INFINITY, left = -INFINITY, top = -INFINITY, bottom = -INFINITY, front = -INFINITY;
  for (int corner = 0; corner < 8; ++corner) {
    const GLDATA_POINT p = fitted.m_Eye.VectorToEye(
        Difference({(corner & 1) != 0 ? aMin.x : aMax.x, (corner & 2) != 0 ? aMin.y : aMax.y,
                    (corner & 4) != 0 ? aMin.z : aMax.z},
                   centre));
    right = (std::max)(right, p.x + slopeX * p.z);
    left = (std::max)(left, -p.x + slopeX * p.z);
    top = (std::max)(top, p.y + slopeY * p.z);
    bottom = (std::max)(bottom, -p.y + slopeY * p.z);
    front = (std::max)(front, p.z);
  }
  GLDATA_POINT place = {(right - left) / 2, (top - bottom) / 2, 0};
  if (fitted.m_bOrtho) {
    const double aspect = fitted.Aspect();
    const double half = aMargin * (std::max)((right + left) / 2 / (std::max)(aspect, 1.0),
                                             (top + bottom) / 2 / (std::max)(1.0 / aspect, 1.0));
    if (!(half > 0.0)) return false;  // a line along the view direction
    fitted.m_sOrthoMin = {-half, -half, fitted.m_sOrthoMin.z};
    fitted.m_sOrthoMax = {half, half, fitted.m_sOrthoMax.z};
    place.z = -fitted.m_Eye.PointToEye(centre).z;
  } else {
    // With a wide field of view the eye could touch a corner.
    place.z = (std::max)({(right + left) / 2 / slopeX, (top + bottom) / 2 / slopeY, front + radius / 10});
  }
  fitted.m_Eye.m_sOrigin = Sum(centre, fitted.m_Eye.VectorToWorld(place));
  GLFitDepth(fitted, centre, 1.01 * radius);
  aView = fitted;
  return true;
}

/// The standard view directions.
enum class GLStandardView { Front, Back, Left, Right, Top, Bottom, Isometric };

/// The axis of the world that points up.
enum class GLUpAxis { Y, Z };

/// Rotates the eye to a standard view. Its position does not change, so call a fit function afterwards. Front
/// looks along -z in a world with y up, and along y in a world with z up.
/// @param aView      the view to change
/// @param aDirection the standard view
/// @param aUp        the axis of the world that points up
inline void GLTurnTo(GLViewGeometry& aView, GLStandardView aDirection, GLUpAxis aUp = GLUpAxis::Y) noexcept {
  using namespace GLVector;
  double right = 0, up = 0;
  switch (aDirection) {
    case GLStandardView::Front:
      break;
    case GLStandardView::Back:
      right = kPi;
      break;
    case GLStandardView::Left:
      right = -kPi / 2;
      break;
    case GLStandardView::Right:
      right = kPi / 2;
      break;
    case GLStandardView::Top:
      up = kPi / 2;
      break;
    case GLStandardView::Bottom:
      up = -kPi / 2;
      break;
    case GLStandardView::Isometric:
      right = kPi / 4;
      up = std::atan(std::sqrt(0.5));
      break;
  }
  const GLDATA_POINT place = aView.m_Eye.m_sOrigin;
  const bool zUp = aUp == GLUpAxis::Z;
  aView.m_Eye = zUp ? GLEye{place, {1, 0, 0}, {0, 0, 1}, {0, -1, 0}} : GLEye{place};
  GLOrbit(aView, place, right, up, zUp ? GLDATA_POINT{0, 0, 1} : GLUpward);
  aView.m_Eye.m_sOrigin = place;
}

/// A smooth transition from one view to another. The host applies At(seconds) until IsOver(seconds).
class GLTransition {
 public:
  /// @param aFrom, aTo two views with the same projection
  /// @param aCentre    centre of interest; it moves on a straight line from its position in the first view to
  ///                   that in the second
  /// @param aRadius    radius of the ball about aCentre that is kept between near and far plane; greater than
  ///                   0
  /// @param aSeconds   duration; with 0 or less the transition is over at once
  GLTransition(const GLViewGeometry& aFrom, const GLViewGeometry& aTo, const GLDATA_POINT& aCentre,
               double aRadius, double aSeconds = 0.4) noexcept
      : m_From(aFrom), m_To(aTo), m_sCentre(aCentre), m_dRadius(aRadius), m_dSeconds(aSeconds) {
    // The rotation between the two views as axis and angle, from the quaternion of the rotation matrix.
    using namespace GLVector;
    const GLDATA_POINT a[3] = {aFrom.m_Eye.VectorToEye(aTo.m_Eye.m_sRight),
                               aFrom.m_Eye.VectorToEye(aTo.m_Eye.m_sUp),
                               aFrom.m_Eye.VectorToEye(aTo.m_Eye.m_sBack)};
    // Of the four forms of the quaternion, the one with the largest component is the most accurate.
    const std::array<double, 4> squares = {1 + a[0].x + a[1].y + a[2].z, 1 + a[0].x - a[1].y - a[2].z,
                                           1 - a[0].x + a[1].y - a[2].z, 1 - a[0].x - a[1].y + a[2].z};
    const double yz = a[1].z - a[2].y, zx = a[2].x - a[0].z, xy = a[0].y - a[1].x;
    const double sumXY = a[0].y + a[1].x, sumZX = a[0].z + a[2].x, sumYZ = a[1].z + a[2].y;
    const std::array<double, 4> forms[4] = {{squares[0], yz, zx, xy},
                                            {yz, squares[1], sumXY, sumZX},
                                            {zx, sumXY, squares[2], sumYZ},
                                            {xy, sumZX, sumYZ, squares[3]}};
    const auto& q = forms[std::max_element(squares.begin(), squares.end()) - squares.begin()];
    const GLDATA_POINT vector = {q[1], q[2], q[3]};
    m_dAngle = 2.0 * std::atan2(Length(vector), q[0]);
    if (m_dAngle > kPi) m_dAngle -= 2.0 * kPi;
    m_sAxis = aFrom.m_Eye.VectorToWorld(Unit(vector));
  }

  /// Returns whether the transition has ended at this time.
  bool IsOver(double aSeconds) const noexcept { return !(aSeconds < m_dSeconds); }

  /// Returns the view at a time since the start: exactly the first view at 0, exactly the last view at the
  /// end.
  GLViewGeometry At(double aSeconds) const noexcept {
    using namespace GLVector;
    if (IsOver(aSeconds)) return m_To;
    if (!(aSeconds > 0.0)) return m_From;
    const double share = aSeconds / m_dSeconds;
    const double t = share * share * (3.0 - 2.0 * share);  // smooth start and end
    GLViewGeometry view = m_To;
    GLEye& eye = view.m_Eye;
    const auto turned = [&](const GLDATA_POINT& aVector) { return Turned(aVector, m_sAxis, m_dAngle * t); };
    eye.m_sRight = turned(m_From.m_Eye.m_sRight);
    eye.m_sUp = turned(m_From.m_Eye.m_sUp);
    eye.m_sBack = turned(m_From.m_Eye.m_sBack);
    const GLDATA_POINT from = m_From.m_Eye.PointToEye(m_sCentre), to = m_To.m_Eye.PointToEye(m_sCentre);
    const double z = Between(-from.z, -to.z, t);
    GLDATA_POINT place = {Mix(from.x, to.x, t), Mix(from.y, to.y, t), -z};
    if (from.z < 0.0 && to.z < 0.0) {  // a straight line on the screen
      place.x = Mix(from.x / -from.z, to.x / -to.z, t) * z;
      place.y = Mix(from.y / -from.z, to.y / -to.z, t) * z;
    }
    eye.m_sOrigin = Difference(m_sCentre, eye.VectorToWorld(place));
    MixExtents(m_From.m_sOrthoMin.x, m_From.m_sOrthoMax.x, t, &view.m_sOrthoMin.x, &view.m_sOrthoMax.x);
    MixExtents(m_From.m_sOrthoMin.y, m_From.m_sOrthoMax.y, t, &view.m_sOrthoMin.y, &view.m_sOrthoMax.y);
    GLFitDepth(view, m_sCentre, m_dRadius);
    return view;
  }

 private:
  static double Mix(double a, double b, double t) noexcept { return a + (b - a) * t; }
  /// Interpolates geometrically between two distances.
  static double Between(double a, double b, double t) noexcept {
    return a > 0.0 && b > 0.0 ? a * std::pow(b / a, t) : Mix(a, b, t);
  }
  static void MixExtents(double aLow, double aHigh, double t, double* aTargetLow,
                         double* aTargetHigh) noexcept {
    const double centre = Mix(aLow + aHigh, *aTargetLow + *aTargetHigh, t) * 0.5;
    const double half = Between(aHigh - aLow, *aTargetHigh - *aTargetLow, t) * 0.5;
    *aTargetLow = centre - half;
    *aTargetHigh = centre + half;
  }

  GLViewGeometry m_From, m_To;
  GLDATA_POINT m_sCentre;
  double m_dRadius, m_dSeconds;
  GLDATA_POINT m_sAxis = {0, 0, 1};  // axis of the rotation, in the world
  double m_dAngle = 0.0;             // radians
};
