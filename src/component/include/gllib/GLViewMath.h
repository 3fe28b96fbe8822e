/// @file
/// The geometry of a viewer, header only: the eye, the projection, and conversions between the world, the
/// pixels of the window and the points of IGLContext::Select. Results match the pictures. Plain values; any
/// thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLPtr.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

/// Arithmetic of points and vectors.
namespace GLVector {

inline constexpr double kPi = 3.14159265358979323846;  ///< half a turn in radians

/// a + b
inline GLDATA_POINT Sum(const GLDATA_POINT& a, const GLDATA_POINT& b) noexcept {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}
/// a - b
inline GLDATA_POINT Difference(const GLDATA_POINT& a, const GLDATA_POINT& b) noexcept {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
/// a * aFactor
inline GLDATA_POINT Scaled(const GLDATA_POINT& a, double aFactor) noexcept {
  return {a.x * aFactor, a.y * aFactor, a.z * aFactor};
}
/// Returns the scalar product.
inline double Dot(const GLDATA_POINT& a, const GLDATA_POINT& b) noexcept {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}
/// Returns the vector product.
inline GLDATA_POINT Cross(const GLDATA_POINT& a, const GLDATA_POINT& b) noexcept {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
/// Returns the length of a vector.
inline double Length(const GLDATA_POINT& a) noexcept { return std::hypot(a.x, a.y, a.z); }
/// Returns the vector scaled to length 1; 0, 0, 0 is not changed.
inline GLDATA_POINT Unit(const GLDATA_POINT& a) noexcept {
  const double length = Length(a);
  return length > 0.0 ? Scaled(a, 1.0 / length) : a;
}
/// Rotates a vector about an axis through the origin, counter-clockwise when seen from the tip of the axis.
/// @param a the vector
/// @param aAxis a unit vector
/// @param aAngle radians
inline GLDATA_POINT Turned(const GLDATA_POINT& a, const GLDATA_POINT& aAxis, double aAngle) noexcept {
  const double c = std::cos(aAngle), s = std::sin(aAngle);
  return Sum(Sum(Scaled(a, c), Scaled(Cross(aAxis, a), s)), Scaled(aAxis, Dot(aAxis, a) * (1.0 - c)));
}

}  // namespace GLVector

/// A position in the window: pixels from its top left corner, x to the right, y down, as in mouse events. The
/// first pixel extends from 0 to 1, so its middle is at 0.5, 0.5.
struct GLPixelPlace {
  double x;  ///< from the left edge
  double y;  ///< from the top edge
};

/// Returns the middle of a pixel with the integer coordinates of a mouse event.
inline GLPixelPlace GLMiddleOfPixel(int aX, int aY) noexcept { return {aX + 0.5, aY + 0.5}; }

/// A ray in the world.
struct GLRay {
  GLDATA_POINT m_sStart;      ///< on the near plane
  GLDATA_POINT m_sDirection;  ///< away from the eye, length 1

  /// Returns the point at a distance from the start.
  GLDATA_POINT PointAt(double aDistance) const noexcept {
    return GLVector::Sum(m_sStart, GLVector::Scaled(m_sDirection, aDistance));
  }
  /// Returns the point of the ray's line that is closest to a point.
  GLDATA_POINT ClosestTo(const GLDATA_POINT& aPoint) const noexcept {
    return PointAt(GLVector::Dot(GLVector::Difference(aPoint, m_sStart), m_sDirection));
  }
};

/// The position of a world point in the picture.
struct GLSeenPoint {
  GLPixelPlace m_sPixel;  ///< in the window
  double m_dDepth;        ///< in the depth buffer: 0 at the near plane, 1 at the far plane
  bool m_bVisible;        ///< whether it is in the view volume and in the visible rectangle
};

/// A rectangle in pixels of the window. The origin is the lower left corner, as for clip rectangles.
struct GLPixelRectangle {
  int m_iX;       ///< left edge
  int m_iY;       ///< lower edge
  int m_iWidth;   ///< pixels
  int m_iHeight;  ///< pixels
};

/// An eye: an origin and three perpendicular unit vectors in the world. It looks along -m_sBack.
struct GLEye {
  GLDATA_POINT m_sOrigin = {0, 0, 0};  ///< position
  GLDATA_POINT m_sRight = {1, 0, 0};   ///< to the right in the picture
  GLDATA_POINT m_sUp = {0, 1, 0};      ///< upward in the picture
  GLDATA_POINT m_sBack = {0, 0, 1};    ///< opposite to the view direction

  /// Converts a placement.
  static GLEye FromPlacement(const GLDATA_MATRIX6D& aPlacement) noexcept {
    const double cx = std::cos(aPlacement.m_dAngleX), sx = std::sin(aPlacement.m_dAngleX);
    const double cy = std::cos(aPlacement.m_dAngleY), sy = std::sin(aPlacement.m_dAngleY);
    const double cz = std::cos(aPlacement.m_dAngleZ), sz = std::sin(aPlacement.m_dAngleZ);
    return {{aPlacement.x, aPlacement.y, aPlacement.z},
            {cy * cz, cx * sz + sx * sy * cz, sx * sz - cx * sy * cz},
            {-cy * sz, cx * cz - sx * sy * sz, sx * cz + cx * sy * sz},
            {sy, -sx * cy, cx * cy}};
  }
  /// Returns the placement of the eye. If only the sum of two angles is determined, the angle about z is 0.
  GLDATA_MATRIX6D Placement() const noexcept {
    const double level = std::hypot(m_sRight.x, m_sUp.x);
    GLDATA_MATRIX6D result = {m_sOrigin.x, m_sOrigin.y, m_sOrigin.z, 0, std::atan2(m_sBack.x, level), 0};
    if (level > 1e-9) {
      result.m_dAngleX = std::atan2(-m_sBack.y, m_sBack.z);
      result.m_dAngleZ = std::atan2(-m_sUp.x, m_sRight.x);
    } else {
      result.m_dAngleX = std::atan2(m_sUp.z, m_sUp.y);
    }
    return result;
  }
  /// Converts a vector from the world to the eye's system.
  GLDATA_POINT VectorToEye(const GLDATA_POINT& aVector) const noexcept {
    using GLVector::Dot;
    return {Dot(aVector, m_sRight), Dot(aVector, m_sUp), Dot(aVector, m_sBack)};
  }
  /// Converts a vector from the eye's system to the world.
  GLDATA_POINT VectorToWorld(const GLDATA_POINT& aVector) const noexcept {
    using namespace GLVector;
    return Sum(Sum(Scaled(m_sRight, aVector.x), Scaled(m_sUp, aVector.y)), Scaled(m_sBack, aVector.z));
  }
  /// Converts a point from the world to the eye's system, in which the eye looks along -z.
  GLDATA_POINT PointToEye(const GLDATA_POINT& aPoint) const noexcept {
    return VectorToEye(GLVector::Difference(aPoint, m_sOrigin));
  }
  /// Converts a point from the eye's system to the world.
  GLDATA_POINT PointToWorld(const GLDATA_POINT& aPoint) const noexcept {
    return GLVector::Sum(m_sOrigin, VectorToWorld(aPoint));
  }
};

/// Eye, projection and rectangles of a viewer at one moment. All results match the pictures, in perspective
/// and in parallel projection, clipped or not, for any aspect ratio.
struct GLViewGeometry {
  GLEye m_Eye;                                  ///< eye of the viewer
  bool m_bOrtho = true;                         ///< parallel projection, else perspective
  GLDATA_POINT m_sOrthoMin = {-50, -50, 0};     ///< as IGLViewer::SetOrthoExtents
  GLDATA_POINT m_sOrthoMax = {50, 50, 1000};    ///< as IGLViewer::SetOrthoExtents
  double m_dFovy = 27.0;                        ///< vertical field of view in degrees
  double m_dEyeAspect = 1.0;                    ///< factor that multiplies the rectangle's aspect ratio
  double m_dNear = 0.1;                         ///< distance of the near plane in perspective
  double m_dFar = 1000.0;                       ///< distance of the far plane in perspective
  int m_iWindowHeight = 1;                      ///< pixels
  GLPixelRectangle m_sVisible = {0, 0, 1, 1};   ///< the clip rectangle or the window
  GLPixelRectangle m_sViewport = {0, 0, 1, 1};  ///< viewport of the whole picture

  /// Reads a viewer of a context. Settings that another thread changes at the same time may be half changed.
  static GLViewGeometry Of(IGLContext& aContext, IGLViewer& aViewer) noexcept;

  /// Sets the values that navigation changes in a viewer: the eye, the parallel extents, near and far plane.
  void Apply(IGLViewer& aViewer) const noexcept {
    GLPtr<IGLCoord> eye;
    aViewer.GetCoord(eye.Put());
    GLDATA_MATRIX6D placement = m_Eye.Placement();
    eye->SetMatrix6d(&placement);
    GLDATA_POINT low = m_sOrthoMin, high = m_sOrthoMax;
    aViewer.SetOrthoExtents(&low, &high);
    aViewer.SetEyeZNearAndFar(m_dNear, m_dFar);
  }

  /// Returns width divided by height of the visible rectangle.
  double Aspect() const noexcept { return static_cast<double>(m_sVisible.m_iWidth) / m_sVisible.m_iHeight; }

  /// Returns whether a pixel is in the visible rectangle.
  bool Contains(const GLPixelPlace& aPixel) const noexcept {
    const double x = aPixel.x - m_sVisible.m_iX, y = m_iWindowHeight - aPixel.y - m_sVisible.m_iY;
    return x >= 0.0 && x < m_sVisible.m_iWidth && y > 0.0 && y <= m_sVisible.m_iHeight;
  }
  /// Converts a pixel to a point for IGLContext::Select: -1 to 1 over the visible rectangle, y up.
  GLDATA_POINT SelectPoint(const GLPixelPlace& aPixel) const noexcept {
    return {(aPixel.x - m_sVisible.m_iX) / m_sVisible.m_iWidth * 2.0 - 1.0,
            (m_iWindowHeight - aPixel.y - m_sVisible.m_iY) / m_sVisible.m_iHeight * 2.0 - 1.0, 0.0};
  }

  /// Converts a world point to a pixel. @return nothing for a point beside or behind a perspective eye
  std::optional<GLSeenPoint> PixelOf(const GLDATA_POINT& aPoint) const noexcept {
    const Lens lens = MakeLens();
    const GLDATA_POINT p = m_Eye.PointToEye(aPoint);
    if (lens.perspective && !(p.z < 0.0)) return std::nullopt;
    const double w = lens.perspective ? -p.z : 1.0;
    const double x = (p.x / w - lens.centreX) * lens.scaleX, y = (p.y / w - lens.centreY) * lens.scaleY;
    const double depth = (lens.depthScale * p.z + lens.depthShift) / w;
    GLSeenPoint seen = {{m_sViewport.m_iX + (x + 1.0) * 0.5 * m_sViewport.m_iWidth,
                         m_iWindowHeight - m_sViewport.m_iY - (y + 1.0) * 0.5 * m_sViewport.m_iHeight},
                        (depth + 1.0) * 0.5,
                        false};
    seen.m_bVisible =
        (std::max)({std::abs(x), std::abs(y), std::abs(depth)}) <= 1.0 && Contains(seen.m_sPixel);
    return seen;
  }
  /// Returns the ray of a position in the window.
  GLRay Ray(const GLPixelPlace& aPixel) const noexcept {
    const Lens lens = MakeLens();
    const GLDATA_POINT start = Unproject(lens, aPixel, lens.nearZ);
    const GLDATA_POINT direction =
        lens.perspective ? start : GLDATA_POINT{0, 0, lens.depthScale < 0.0 ? -1.0 : 1.0};
    return {m_Eye.PointToWorld(start), m_Eye.VectorToWorld(GLVector::Unit(direction))};
  }
  /// Returns the world point at a position and a depth buffer value, 0 to 1.
  GLDATA_POINT PointAtDepth(const GLPixelPlace& aPixel, double aDepth) const noexcept {
    const Lens lens = MakeLens();
    const double depth = aDepth * 2.0 - 1.0;
    const double z = lens.perspective ? -lens.depthShift / (depth + lens.depthScale)
                                      : (depth - lens.depthShift) / lens.depthScale;
    return m_Eye.PointToWorld(Unproject(lens, aPixel, z));
  }
  /// Returns the world point at a position, in the plane through aPoint parallel to the screen.
  GLDATA_POINT PointInPlaneOf(const GLDATA_POINT& aPoint, const GLPixelPlace& aPixel) const noexcept {
    return m_Eye.PointToWorld(Unproject(MakeLens(), aPixel, m_Eye.PointToEye(aPoint).z));
  }
  /// Returns half the width and half the height of the picture; in perspective at distance 1 from the eye.
  /// @return the two lengths; infinite or NaN in a perspective with a field of view of 0
  std::array<double, 2> HalfExtents() const noexcept {
    const Lens lens = MakeLens();
    if (!m_bOrtho && !lens.perspective) return {INFINITY, INFINITY};
    return {1.0 / lens.scaleX, 1.0 / lens.scaleY};
  }

 private:
  // The projection that the passes of a viewer set: x and y of the picture are (p / w - centre) * scale, with
  // w = -z in a perspective and 1 otherwise; the depth is (depthScale * z + depthShift) / w.
  struct Lens {
    bool perspective;
    double scaleX, scaleY, centreX, centreY, depthScale, depthShift, nearZ;
  };

  Lens MakeLens() const noexcept {
    const double aspect = Aspect();
    if (m_bOrtho) {
      // The shorter side shows the extents; the longer side shows more.
      const double ax = (std::max)(aspect, 1.0), ay = (std::max)(1.0 / aspect, 1.0);
      const double depth = m_sOrthoMax.z - m_sOrthoMin.z;
      return {false,
              2.0 / (ax * (m_sOrthoMax.x - m_sOrthoMin.x)),
              2.0 / (ay * (m_sOrthoMax.y - m_sOrthoMin.y)),
              ax * (m_sOrthoMax.x + m_sOrthoMin.x) * 0.5,
              ay * (m_sOrthoMax.y + m_sOrthoMin.y) * 0.5,
              -2.0 / depth,
              -(m_sOrthoMax.z + m_sOrthoMin.z) / depth,
              -m_sOrthoMin.z};
    }
    const double tangent = std::tan(m_dFovy * 0.5 * GLVector::kPi / 180.0);
    // With a field of view of 0 the projection is the identity.
    if (tangent == 0.0) return {false, 1, 1, 0, 0, 1, 0, -1};
    const double depth = m_dFar - m_dNear;
    return {true,
            1.0 / (tangent * aspect * m_dEyeAspect),
            1.0 / tangent,
            0.0,
            0.0,
            -(m_dFar + m_dNear) / depth,
            -2.0 * m_dFar * m_dNear / depth,
            -m_dNear};
  }
  /// Returns the point of the eye's system at a position in the window and a depth z.
  GLDATA_POINT Unproject(const Lens& aLens, const GLPixelPlace& aPixel, double aZ) const noexcept {
    const double x = (aPixel.x - m_sViewport.m_iX) / m_sViewport.m_iWidth * 2.0 - 1.0;
    const double y = (m_iWindowHeight - aPixel.y - m_sViewport.m_iY) / m_sViewport.m_iHeight * 2.0 - 1.0;
    const double w = aLens.perspective ? -aZ : 1.0;
    return {(x / aLens.scaleX + aLens.centreX) * w, (y / aLens.scaleY + aLens.centreY) * w, aZ};
  }
};

inline GLViewGeometry GLViewGeometry::Of(IGLContext& aContext, IGLViewer& aViewer) noexcept {
  GLViewGeometry view;
  GLPtr<IGLCoord> eye;
  GLDATA_MATRIX6D placement{};
  aViewer.GetCoord(eye.Put());
  eye->GetMatrix6d(&placement);
  view.m_Eye = GLEye::FromPlacement(placement);
  LONG ortho = 0, clipped = 0, scaled = 0;
  aViewer.IsOrtho(&ortho);
  view.m_bOrtho = ortho != 0;
  aViewer.GetOrthoExtents(&view.m_sOrthoMin, &view.m_sOrthoMax);
  aViewer.GetEyeFovy_DEG(&view.m_dFovy);
  aViewer.GetEyeAspect(&view.m_dEyeAspect);
  aViewer.GetEyeZNear(&view.m_dNear);
  aViewer.GetEyeZFar(&view.m_dFar);
  int width = 1;
  aContext.GetViewportWidth(&width);
  aContext.GetViewportHeight(&view.m_iWindowHeight);
  view.m_sVisible = view.m_sViewport = {0, 0, width, view.m_iWindowHeight};
  aViewer.IsClipped(&clipped);
  if (clipped == 0) return view;
  GLPixelRectangle& clip = view.m_sVisible;
  aViewer.GetClipX(&clip.m_iX);
  aViewer.GetClipY(&clip.m_iY);
  aViewer.GetClipWidth(&clip.m_iWidth);
  aViewer.GetClipHeight(&clip.m_iHeight);
  aViewer.IsClipScaled(&scaled);
  if (scaled != 0) view.m_sViewport = clip;
  return view;
}
