/// @file
/// Navigation, header only: orbit, pan, zoom, fit, standard views with transitions, and first-person
/// movement, in perspective and parallel projection. All of it changes a GLViewGeometry, which the host reads
/// from a viewer before and applies to it afterwards:
///
///     GLViewGeometry view = GLViewGeometry::Of(context, viewer);
///     GLOrbit(view, pivot, 0.01 * right, 0.01 * down);
///     view.Apply(viewer);
///
/// Plain values; any thread.

#pragma once

#include <gllib/GLViewMath.h>

#include <utility>

/// The direction that orbit and look keep upright, unless the host says otherwise.
inline constexpr GLDATA_POINT GLUpward = {0, 1, 0};

/// Turns the eye about a pivot, which keeps its pixel exactly, wherever it lies.
/// @param aView  changes
/// @param aPivot a point of the world, for instance the one under the mouse
/// @param aRight radians about the upward axis: above 0 the eye goes to the right
/// @param aUp    radians about the eye's own horizontal: above 0 the eye goes up, at most to the pole
/// @param aUpward the upward axis through the pivot; of length 1
inline void GLOrbit(GLViewGeometry& aView, const GLDATA_POINT& aPivot, double aRight, double aUp,
                    const GLDATA_POINT& aUpward = GLUpward) noexcept {
  using namespace GLVector;
  GLEye& eye = aView.m_Eye;
  // An eye that stands upright stops above and below the pivot. One that is tilted has no pole to stop at.
  constexpr double kUpright = 1e-6;
  if (std::abs(Dot(eye.m_sRight, aUpward)) < kUpright) {
    const double elevation = std::atan2(Dot(eye.m_sBack, aUpward), Dot(eye.m_sUp, aUpward));
    aUp =
        std::clamp(elevation + aUp, std::min(elevation, -kPi / 2), std::max(elevation, kPi / 2)) - elevation;
  }
  const auto turned = [&](const GLDATA_POINT& aVector) {
    return Turned(Turned(aVector, eye.m_sRight, -aUp), aUpward, aRight);
  };
  // The pivot's place in the eye's system stays, and with it its pixel.
  const GLDATA_POINT pivot = eye.PointToEye(aPivot);
  GLEye result = {{}, Unit(turned(eye.m_sRight)), {}, turned(eye.m_sBack)};
  result.m_sUp = Unit(Cross(result.m_sBack, result.m_sRight));
  result.m_sBack = Cross(result.m_sRight, result.m_sUp);
  result.m_sOrigin = Difference(aPivot, result.VectorToWorld(pivot));
  eye = result;
}

/// Moves the eye parallel to the screen so that a point of the world appears at a place of the window.
/// @param aView  changes
/// @param aPoint for instance the point that was under the mouse when the drag began
/// @param aPixel where the mouse is now
inline void GLPan(GLViewGeometry& aView, const GLDATA_POINT& aPoint, const GLPixelPlace& aPixel) noexcept {
  using namespace GLVector;
  const GLDATA_POINT shift = Difference(aPoint, aView.PointInPlaneOf(aPoint, aPixel));
  aView.m_Eye.m_sOrigin = Sum(aView.m_Eye.m_sOrigin, shift);
}

/// Brings the picture nearer or further away. A point of the world keeps its pixel: the one under the cursor.
/// @param aView   changes
/// @param aPoint  a perspective eye goes towards it or away from it; it must not be the eye's own place
/// @param aFactor of the distance in a perspective, of the extents in a parallel projection; below 1 is
/// nearer.
///                Above 0
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

/// Moves the eye along its own axes, in units of the world. Forward shows in a perspective alone.
inline void GLWalk(GLViewGeometry& aView, double aRight, double aUp, double aForward) noexcept {
  GLEye& eye = aView.m_Eye;
  eye.m_sOrigin = eye.PointToWorld({aRight, aUp, -aForward});
}

/// Turns the head: the eye keeps its place.
/// @param aView changes
/// @param aLeft radians about the upward axis: above 0 looks to the left
/// @param aUp   radians: above 0 looks up, at most straight up
/// @param aUpward of length 1
inline void GLLook(GLViewGeometry& aView, double aLeft, double aUp,
                   const GLDATA_POINT& aUpward = GLUpward) noexcept {
  const GLDATA_POINT place = aView.m_Eye.m_sOrigin;
  GLOrbit(aView, place, aLeft, -aUp, aUpward);
  aView.m_Eye.m_sOrigin = place;
}

/// Sets near and far plane so that a ball lies between them. To be called after each movement.
/// @param aView   changes
/// @param aCentre of the ball
/// @param aRadius above 0. A perspective's near plane keeps 1/1000 of the far one's distance at least
inline void GLFitDepth(GLViewGeometry& aView, const GLDATA_POINT& aCentre, double aRadius) noexcept {
  const double distance = -aView.m_Eye.PointToEye(aCentre).z;
  aView.m_sOrthoMin.z = distance - aRadius;
  aView.m_sOrthoMax.z = distance + aRadius;
  aView.m_dFar = std::max(distance + aRadius, aRadius);
  aView.m_dNear = std::max(distance - aRadius, aView.m_dFar / 1000.0);
}

/// Brings a ball into view, in the middle, as large as fits; the direction of sight stays.
/// @param aView   changes
/// @param aCentre of the ball
/// @param aRadius above 0
/// @param aMargin 1 lets the ball touch the edge, 1.1 leaves a tenth
/// @return false, with nothing changed, in a perspective that has no field of view
inline bool GLFitBall(GLViewGeometry& aView, const GLDATA_POINT& aCentre, double aRadius,
                      double aMargin = 1.04) noexcept {
  using namespace GLVector;
  GLViewGeometry perspective = aView;
  perspective.m_bOrtho = false;
  const auto [tangentX, tangentY] = perspective.HalfExtents();
  const double tangent = std::min(tangentX, tangentY);
  // A parallel eye stands where a perspective one would, so that the projection can be exchanged.
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

/// Brings a box into view, as large as its eight corners fit; the direction of sight stays.
/// @param aView      changes
/// @param aMin, aMax two opposite corners, of a box that isn't a single point
/// @param aMargin    as at GLFitBall
/// @return false, with nothing changed, in a perspective that has no field of view
inline bool GLFitBox(GLViewGeometry& aView, const GLDATA_POINT& aMin, const GLDATA_POINT& aMax,
                     double aMargin = 1.04) noexcept {
  using namespace GLVector;
  const GLDATA_POINT centre = Scaled(Sum(aMin, aMax), 0.5);
  const double radius = Length(Difference(aMax, aMin)) * 0.5;
  GLViewGeometry fitted = aView;
  if (!GLFitBall(fitted, centre, radius, aMargin)) return false;
  // How far the corners reach to either side, per axis: in the perspective together with their depth.
  const auto [halfX, halfY] = fitted.HalfExtents();
  const double slopeX = fitted.m_bOrtho ? 0.0 : halfX / aMargin;
  const double slopeY = fitted.m_bOrtho ? 0.0 : halfY / aMargin;
  double right = -INFINITY, left = -INFINITY, top = -INFINITY, bottom = -INFINITY, front = -INFINITY;
  for (int corner = 0; corner < 8; ++corner) {
    const GLDATA_POINT p = fitted.m_Eye.VectorToEye(
        Difference({(corner & 1) != 0 ? aMin.x : aMax.x, (corner & 2) != 0 ? aMin.y : aMax.y,
                    (corner & 4) != 0 ? aMin.z : aMax.z},
                   centre));
    right = std::max(right, p.x + slopeX * p.z);
    left = std::max(left, -p.x + slopeX * p.z);
    top = std::max(top, p.y + slopeY * p.z);
    bottom = std::max(bottom, -p.y + slopeY * p.z);
    front = std::max(front, p.z);
  }
  GLDATA_POINT place = {(right - left) / 2, (top - bottom) / 2, 0};
  if (fitted.m_bOrtho) {
    const double aspect = fitted.Aspect();
    const double half = aMargin * std::max((right + left) / 2 / std::max(aspect, 1.0),
                                           (top + bottom) / 2 / std::max(1.0 / aspect, 1.0));
    if (!(half > 0.0)) return false;  // a line that runs along the sight
    fitted.m_sOrthoMin = {-half, -half, fitted.m_sOrthoMin.z};
    fitted.m_sOrthoMax = {half, half, fitted.m_sOrthoMax.z};
    place.z = -fitted.m_Eye.PointToEye(centre).z;
  } else {
    // A wide field of view would let the eye touch a corner.
    place.z = std::max({(right + left) / 2 / slopeX, (top + bottom) / 2 / slopeY, front + radius / 10});
  }
  fitted.m_Eye.m_sOrigin = Sum(centre, fitted.m_Eye.VectorToWorld(place));
  GLFitDepth(fitted, centre, 1.01 * radius);
  aView = fitted;
  return true;
}

/// The directions that models are looked at from.
enum class GLStandardView { Front, Back, Left, Right, Top, Bottom, Isometric };

/// Turns the eye to a standard view; its place stays, so a fit should follow. Front looks along -z in a world
/// whose y points upward, and along y in one whose z does.
/// @param aView      changes
/// @param aDirection the view
/// @param aZUpward whether the world's z points upward
inline void GLTurnTo(GLViewGeometry& aView, GLStandardView aDirection, bool aZUpward = false) noexcept {
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
  aView.m_Eye = aZUpward ? GLEye{place, {1, 0, 0}, {0, 0, 1}, {0, -1, 0}} : GLEye{place};
  GLOrbit(aView, place, right, up, aZUpward ? GLDATA_POINT{0, 0, 1} : GLUpward);
  aView.m_Eye.m_sOrigin = place;
}

/// A smooth way from one view to another. The host drives it: it applies At(seconds) until IsOver(seconds).
class GLTransition {
 public:
  /// @param aFrom, aTo two views with the same projection
  /// @param aCentre    what is looked at; it goes straight from its place in the one view to that in the
  /// other
  /// @param aRadius    of the ball about aCentre that stays between near and far plane on the way; above 0
  /// @param aSeconds   how long it takes; 0 or less is over at once
  GLTransition(const GLViewGeometry& aFrom, const GLViewGeometry& aTo, const GLDATA_POINT& aCentre,
               double aRadius, double aSeconds = 0.4) noexcept
      : m_From(aFrom), m_To(aTo), m_sCentre(aCentre), m_dRadius(aRadius), m_dSeconds(aSeconds) {
    // The turn between the two, as an axis and an angle, from the quaternion of the rotation matrix.
    using namespace GLVector;
    const GLDATA_POINT a[3] = {aFrom.m_Eye.VectorToEye(aTo.m_Eye.m_sRight),
                               aFrom.m_Eye.VectorToEye(aTo.m_Eye.m_sUp),
                               aFrom.m_Eye.VectorToEye(aTo.m_Eye.m_sBack)};
    // Of the four forms of the quaternion the one with the largest component is exact.
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

  /// Whether the way ends before or at this time.
  bool IsOver(double aSeconds) const noexcept { return !(aSeconds < m_dSeconds); }

  /// The view at a time since the start; exactly the first one at 0, exactly the last one at the end.
  GLViewGeometry At(double aSeconds) const noexcept {
    using namespace GLVector;
    if (IsOver(aSeconds)) return m_To;
    if (!(aSeconds > 0.0)) return m_From;
    const double share = aSeconds / m_dSeconds;
    const double t = share * share * (3.0 - 2.0 * share);  // starts and ends gently
    GLViewGeometry view = m_To;
    GLEye& eye = view.m_Eye;
    const auto turned = [&](const GLDATA_POINT& aVector) { return Turned(aVector, m_sAxis, m_dAngle * t); };
    eye.m_sRight = turned(m_From.m_Eye.m_sRight);
    eye.m_sUp = turned(m_From.m_Eye.m_sUp);
    eye.m_sBack = turned(m_From.m_Eye.m_sBack);
    const GLDATA_POINT from = m_From.m_Eye.PointToEye(m_sCentre), to = m_To.m_Eye.PointToEye(m_sCentre);
    const double z = Between(-from.z, -to.z, t);
    GLDATA_POINT place = {Mix(from.x, to.x, t), Mix(from.y, to.y, t), -z};
    if (from.z < 0.0 && to.z < 0.0) {  // straight on the screen
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
  /// Between two distances by equal factors in equal times.
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
  GLDATA_POINT m_sAxis = {0, 0, 1};  // of the turn, in the world
  double m_dAngle = 0.0;             // radians
};
