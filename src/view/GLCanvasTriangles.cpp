// GLCanvas: the store of transparent triangles. Clients sort and draw them.
// Draw thread; no lock.

#include <algorithm>
#include <array>

#include "component/Output.h"
#include "geometry/GPlane.h"
#include "geometry/GPoint.h"
#include "view/GLCanvas.h"

namespace {

/// Returns the normal of the side on which the points run counter-clockwise; zero for a triangle without
/// area.
GLDATA_POINT FaceNormal(const GLDATA_POINT* aPoints) noexcept {
  const auto point = [aPoints](int i) { return GPoint(aPoints[i].x, aPoints[i].y, aPoints[i].z); };
  const GPoint normal = GPlane(point(0), point(1), point(2)).GetUnitNormal();
  return {normal.x, normal.y, normal.z};
}

GLDATA_POINT Centroid(const GLDATA_POINT* aPoints) noexcept {
  const auto mean = [aPoints](double GLDATA_POINT::*aAxis) {
    return (0.0 + aPoints[0].*aAxis + aPoints[1].*aAxis + aPoints[2].*aAxis) / 3.0;
  };
  return {mean(&GLDATA_POINT::x), mean(&GLDATA_POINT::y), mean(&GLDATA_POINT::z)};
}

}  // namespace

HRESULT GLCanvas::AddTriangle(const GLDATA_POINT* aPoints, const GLDATA_RGBA* aColors,
                              const GLDATA_POINT* aNormals) noexcept {
  const std::size_t stored = m_lstCentroids.size();
  try {
    m_lstPoints.insert(m_lstPoints.end(), aPoints, aPoints + 3);
    m_lstNormals.insert(m_lstNormals.end(), aNormals, aNormals + 3);
    m_lstColors.insert(m_lstColors.end(), aColors, aColors + 3);
    m_lstCentroids.push_back(Centroid(aPoints));
    return S_OK;
  } catch (...) {
    CutStoreTo(stored);
    return E_OUTOFMEMORY;
  }
}

// Removes all elements after the first aTriangles triangles.
void GLCanvas::CutStoreTo(std::size_t aTriangles) noexcept {
  const auto cut = [](auto& aStore, std::size_t aSize) {
    while (aStore.size() > aSize) aStore.pop_back();
  };
  cut(m_lstPoints, 3 * aTriangles);
  cut(m_lstNormals, 3 * aTriangles);
  cut(m_lstColors, 3 * aTriangles);
  cut(m_lstCentroids, aTriangles);
}

HRESULT GLCanvas::AddTransparentTriangle(GLDATA_POINT arPoints[3], GLDATA_RGBA* pColor) noexcept {
  if (arPoints == nullptr || pColor == nullptr) return E_INVALIDARG;
  GLDATA_RGBA colors[3] = {*pColor, *pColor, *pColor};
  return AddTransparentTriangle2(arPoints, colors);
}

HRESULT GLCanvas::AddTransparentTriangle2(GLDATA_POINT arPoints[3], GLDATA_RGBA arColors[3]) noexcept {
  if (arPoints == nullptr || arColors == nullptr) return E_INVALIDARG;
  const GLDATA_POINT normal = FaceNormal(arPoints);
  const GLDATA_POINT normals[3] = {normal, normal, normal};
  return AddTriangle(arPoints, arColors, normals);
}

HRESULT GLCanvas::AddTransparentTriangle3(GLDATA_POINT arPoints[3], GLDATA_RGBA arColors[3],
                                          GLDATA_POINT arNormals[3]) noexcept {
  if (arPoints == nullptr || arColors == nullptr || arNormals == nullptr) return E_INVALIDARG;
  return AddTriangle(arPoints, arColors, arNormals);
}

HRESULT GLCanvas::ClearTransparentTriangles() noexcept {
  m_lstPoints.clear();
  m_lstNormals.clear();
  m_lstColors.clear();
  m_lstCentroids.clear();
  return S_OK;
}

HRESULT GLCanvas::GetNumTransparentTriangles(LONG* plCount) noexcept {
  return Output(plCount, m_lstCentroids.size());
}

HRESULT GLCanvas::GetTransparentTriangles(LONG lOffset, LONG lCount,
                                          GLDATA_TRANS_TRIANGLE* arTriangles) noexcept {
  // A negative offset counts as 0, also in the sum, so that the range ends inside the store.
  const auto first = static_cast<std::int64_t>(std::max(lOffset, LONG{0}));
  const auto stored = static_cast<std::int64_t>(m_lstCentroids.size());
  if (stored == 0 || first + lCount > stored) return E_INVALIDARG;
  if (lCount < 1) return S_OK;
  if (arTriangles == nullptr) return E_INVALIDARG;

  const auto corner = static_cast<std::ptrdiff_t>(3 * first);
  auto point = m_lstPoints.cbegin() + corner;
  auto normal = m_lstNormals.cbegin() + corner;
  auto color = m_lstColors.cbegin() + corner;
  auto centroid = m_lstCentroids.cbegin() + static_cast<std::ptrdiff_t>(first);
  for (LONG i = 0; i < lCount; ++i) {
    GLDATA_TRANS_TRIANGLE& record = arTriangles[i];
    for (int k = 0; k < 3; ++k) {
      record.m_sPoints[k] = *point++;
      record.m_sNormals[k] = *normal++;
      record.m_sColors[k] = *color++;
    }
    record.m_sCentroid = *centroid++;
    record.m_dMidDistance = 0.0;  // clients set it
  }
  return S_OK;
}
