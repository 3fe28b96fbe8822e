// wglUseFontOutlinesA: one list per code, which draws the filled outline, flat or extruded, and moves to the
// next character. Needs a current GL context.

#include <algorithm>
#include <cmath>

#include "platform/linux/fonts/GlyphTessellator.h"

namespace {

// Cosine of about 35 degrees. Edges that meet at a smaller angle belong to one curve and are shaded smoothly.
constexpr double kSmoothCosine = 0.82;

OutlinePoint OutwardNormal(const OutlinePoint& aFrom, const OutlinePoint& aTo) noexcept {
  const double dx = aTo.x - aFrom.x, dy = aTo.y - aFrom.y;
  const double length = std::hypot(dx, dy);
  return length > 0 ? OutlinePoint{dy / length, -dx / length} : OutlinePoint{0, 0};
}

/// Returns the normal of a wall at its edge to a neighbour: the average for a smooth edge, the wall's own at
/// a corner.
OutlinePoint NormalBetween(const OutlinePoint& aOwn, const OutlinePoint& aNeighbour) noexcept {
  if (aOwn.x * aNeighbour.x + aOwn.y * aNeighbour.y < kSmoothCosine) return aOwn;
  const OutlinePoint sum{aOwn.x + aNeighbour.x, aOwn.y + aNeighbour.y};
  const double length = std::hypot(sum.x, sum.y);
  return {sum.x / length, sum.y / length};
}

void PutVertex(const OutlinePoint& aPoint, float aZ) noexcept {
  glVertex3f(static_cast<float>(aPoint.x), static_cast<float>(aPoint.y), aZ);
}

void PutWallEnd(const OutlinePoint& aNormal) noexcept {
  glNormal3f(static_cast<float>(aNormal.x), static_cast<float>(aNormal.y), 0.0f);
}

void DrawFaces(const std::vector<OutlinePoint>& aTriangles, float aExtrusion) noexcept {
  glBegin(GL_TRIANGLES);
  glNormal3f(0.0f, 0.0f, 1.0f);
  for (const OutlinePoint& point : aTriangles) PutVertex(point, 0.0f);
  if (aExtrusion > 0.0f) {
    glNormal3f(0.0f, 0.0f, -1.0f);
    for (auto point = aTriangles.rbegin(); point != aTriangles.rend(); ++point)
      PutVertex(*point, -aExtrusion);
  }
  glEnd();
}

void DrawWalls(const GlyphTessellator::Contour& aContour, float aExtrusion) {
  const std::size_t count = aContour.size();
  std::vector<OutlinePoint> normals(count);
  for (std::size_t i = 0; i < count; ++i) normals[i] = OutwardNormal(aContour[i], aContour[(i + 1) % count]);
  glBegin(GL_QUADS);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t next = (i + 1) % count;
    PutWallEnd(NormalBetween(normals[i], normals[(i + count - 1) % count]));
    PutVertex(aContour[i], 0.0f);
    PutVertex(aContour[i], -aExtrusion);
    PutWallEnd(NormalBetween(normals[i], normals[next]));
    PutVertex(aContour[next], -aExtrusion);
    PutVertex(aContour[next], 0.0f);
  }
  glEnd();
}

GLYPHMETRICSFLOAT MetricsOf(const GlyphTessellator& aGlyph, double aAdvance) noexcept {
  GLYPHMETRICSFLOAT metrics{};
  metrics.gmfCellIncX = static_cast<float>(aAdvance);
  const auto& points = aGlyph.Triangles();
  if (points.empty()) return metrics;
  const auto byX = [](const OutlinePoint& aLeft, const OutlinePoint& aRight) { return aLeft.x < aRight.x; };
  const auto byY = [](const OutlinePoint& aLeft, const OutlinePoint& aRight) { return aLeft.y < aRight.y; };
  const auto [left, right] = std::minmax_element(points.begin(), points.end(), byX);
  const auto [bottom, top] = std::minmax_element(points.begin(), points.end(), byY);
  metrics.gmfBlackBoxX = static_cast<float>(right->x - left->x);
  metrics.gmfBlackBoxY = static_cast<float>(top->y - bottom->y);
  metrics.gmfptGlyphOrigin = {static_cast<float>(left->x), static_cast<float>(top->y)};  // upper left corner
  return metrics;
}

void CompileGlyph(GLuint aList, const GlyphTessellator& aGlyph, float aAdvance, float aExtrusion) {
  glNewList(aList, GL_COMPILE);
  try {
    if (!aGlyph.Triangles().empty()) DrawFaces(aGlyph.Triangles(), aExtrusion);
    if (aExtrusion > 0.0f) {
      for (const auto& contour : aGlyph.Boundary()) DrawWalls(contour, aExtrusion);
    }
    glTranslatef(aAdvance, 0.0f, 0.0f);
  } catch (...) {
    glEndList();
    throw;
  }
  glEndList();
}

}  // namespace

BOOL wglUseFontOutlinesA(HDC hDC, DWORD first, DWORD count, DWORD listBase, FLOAT deviation, FLOAT extrusion,
                         int format, GLYPHMETRICSFLOAT* pMetrics) noexcept {
  const FontObject* font = SelectedFont(hDC);
  if (font == nullptr || first > 256 || count > 256 - first || format != WGL_FONT_POLYGONS) return FALSE;
  try {
    GlyphTessellator glyph;
    GlyphOutline outline;
    for (DWORD i = 0; i < count; ++i) {
      if (!font->Outline(static_cast<unsigned char>(first + i), deviation, outline)) return FALSE;
      if (!glyph.Run(outline)) return FALSE;
      CompileGlyph(listBase + i, glyph, static_cast<float>(outline.m_dAdvance), extrusion);
      if (pMetrics != nullptr) pMetrics[i] = MetricsOf(glyph, outline.m_dAdvance);
    }
  } catch (...) {
    return FALSE;
  }
  return TRUE;
}
