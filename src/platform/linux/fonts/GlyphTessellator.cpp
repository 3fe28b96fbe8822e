// GlyphTessellator: two passes of GLU's tessellator, and its callbacks, which must not throw. One thread per
// object.

#include "platform/linux/fonts/GlyphTessellator.h"

namespace {

template <class Function>
void SetCallback(GLUtesselator* aTess, GLenum aWhich, Function* aFunction) noexcept {
  gluTessCallback(aTess, aWhich, reinterpret_cast<_GLUfuncptr>(aFunction));
}

}  // namespace

GlyphTessellator::GlyphTessellator() : m_pTess(gluNewTess(), &gluDeleteTess) {
  GLUtesselator* tess = m_pTess.get();
  if (tess == nullptr) return;
  SetCallback(
      tess, GLU_TESS_BEGIN_DATA,
      +[](GLenum, void* self) noexcept { static_cast<GlyphTessellator*>(self)->BeginPart(); });
  SetCallback(
      tess, GLU_TESS_VERTEX_DATA, +[](void* vertex, void* self) noexcept {
        static_cast<GlyphTessellator*>(self)->PutVertex(*static_cast<const Vertex*>(vertex));
      });
  SetCallback(
      tess, GLU_TESS_COMBINE_DATA,
      +[](GLdouble at[3], void* [4], GLfloat[4], void** made, void* self) noexcept {
        *made = static_cast<GlyphTessellator*>(self)->Combine(at);
      });
  SetCallback(
      tess, GLU_TESS_ERROR_DATA,
      +[](GLenum, void* self) noexcept { static_cast<GlyphTessellator*>(self)->m_bFailed = true; });
  gluTessNormal(tess, 0, 0, 1);
}

bool GlyphTessellator::Run(const GlyphOutline& aOutline) {
  m_vBoundary.clear();
  m_vTriangles.clear();
  m_bFailed = m_pTess == nullptr;
  const int winding = aOutline.m_bEvenOdd ? GLU_TESS_WINDING_ODD : GLU_TESS_WINDING_NONZERO;
  return !m_bFailed && Tessellate(aOutline.m_vContours, winding, Output::kBoundary) &&
         Tessellate(m_vBoundary, GLU_TESS_WINDING_NONZERO, Output::kTriangles);
}

bool GlyphTessellator::Tessellate(const std::vector<Contour>& aContours, int aWinding, Output aOutput) {
  GLUtesselator* tess = m_pTess.get();
  const bool boundary = aOutput == Output::kBoundary;
  m_Output = aOutput;
  m_Vertices.clear();
  gluTessProperty(tess, GLU_TESS_WINDING_RULE, aWinding);
  gluTessProperty(tess, GLU_TESS_BOUNDARY_ONLY, boundary ? GL_TRUE : GL_FALSE);
  // With an edge flag callback GLU generates only triangles, no fans or strips.
  SetCallback(
      tess, GLU_TESS_EDGE_FLAG, boundary ? nullptr : +[](GLboolean) noexcept {});
  gluTessBeginPolygon(tess, this);
  for (const Contour& contour : aContours) {
    gluTessBeginContour(tess);
    for (const OutlinePoint& point : contour) {
      Vertex& vertex = m_Vertices.emplace_back(Vertex{point.x, point.y, 0});
      gluTessVertex(tess, vertex.data(), &vertex);
    }
    gluTessEndContour(tess);
  }
  gluTessEndPolygon(tess);
  return !m_bFailed;
}

void GlyphTessellator::BeginPart() noexcept {
  if (m_Output != Output::kBoundary) return;
  try {
    m_vBoundary.emplace_back();
  } catch (...) {
    m_bFailed = true;
  }
}

void GlyphTessellator::PutVertex(const Vertex& aVertex) noexcept {
  if (m_bFailed) return;
  try {
    auto& points = m_Output == Output::kBoundary ? m_vBoundary.back() : m_vTriangles;
    points.push_back({aVertex[0], aVertex[1]});
  } catch (...) {
    m_bFailed = true;
  }
}

void* GlyphTessellator::Combine(const double* aAt) noexcept {
  try {
    return &m_Vertices.emplace_back(Vertex{aAt[0], aAt[1], 0});
  } catch (...) {
    m_bFailed = true;
    return &m_Vertices.front();  // not empty, since two edges have crossed
  }
}
