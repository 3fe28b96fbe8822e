// GLViewer: conversion of points between the world and the viewer's normalised screen. Any thread.
//
// The perspective conversions use this model: the plane z = 0 of the eye's coordinate system is the screen.
// The eye is in front of it, at the distance where the field of view covers the height of the screen.

#include <cmath>

#include "geometry/GLine.h"
#include "geometry/GPlane.h"
#include "geometry/GPoint.h"
#include "view/AspectFit.h"
#include "view/GLViewer.h"

namespace {

/// Returns the intersection of the line of sight from (0, 0, aEye) through aTarget with the plane z = aZ. If
/// the line is parallel to the plane, or aEye is not finite, x and y are 0.
GPoint AlongSight(double aEye, const GPoint& aTarget, double aZ) noexcept {
  GPoint met(0.0, 0.0, aZ);
  if (!std::isfinite(aEye)) return met;
  const GPlane plane(GPoint(0.0, 0.0, aZ), GPoint(1.0, 0.0, aZ), GPoint(0.0, 1.0, aZ));
  const GLine sight(GPoint(0.0, 0.0, aEye), aTarget);
  if (!plane.Intersect(sight, met)) return {0.0, 0.0, aZ};
  return met;
}

}  // namespace

// Returns the distance of the eye from the screen plane; not finite for a field of view of 0.
double GLViewer::EyeDistance() const noexcept {
  const double halfHeight = 1.0 / AspectFit(m_dWindowAspect).m_dHeight;
  return halfHeight / (std::tan(kRadiansFromDegrees * 0.5 * m_dEyeFovy) * m_dEyeAspect);
}

HRESULT GLViewer::PointWCStoSCS(GLDATA_POINT* aPntWCS) noexcept {
  if (aPntWCS == nullptr) return E_INVALIDARG;
  GLDATA_POINT& p = *aPntWCS;
  m_pCoord->PointPCStoLCS(&p);
  if (m_bOrtho) {
    const auto [low, high] = m_OrthoExtents.Load();
    p.x = 2.0 * (p.x - low.x) / (high.x - low.x) - 1.0;
    p.y = 2.0 * (p.y - low.y) / (high.y - low.y) - 1.0;
  } else {
    const GPoint met = AlongSight(EyeDistance(), GPoint(p.x, p.y, p.z), 0.0);
    p.x = met.x;
    p.y = met.y * m_dEyeAspect;
  }
  return S_OK;
}

HRESULT GLViewer::PointSCStoWCS(GLDATA_POINT* aPntSCS) noexcept {
  if (aPntSCS == nullptr) return E_INVALIDARG;
  GLDATA_POINT& p = *aPntSCS;
  if (m_bOrtho) {
    const auto [low, high] = m_OrthoExtents.Load();
    p.x = (high.x - low.x) * ((p.x + 1.0) * 0.5) + low.x;
    p.y = (high.y - low.y) * ((p.y + 1.0) * 0.5) + low.y;
  } else {
    const GPoint met = AlongSight(EyeDistance(), GPoint(p.x, p.y, 0.0), p.z);
    p.x = met.x;
    p.y = met.y / m_dEyeAspect;
  }
  m_pCoord->PointLCStoPCS(&p);
  return S_OK;
}
