// GlyphTessellator: converts the polygons of a glyph to its boundary and to triangles, by GLU's tessellator.
// One per build of a font, used on the thread that created it.

#pragma once

#include <array>
#include <deque>
#include <memory>
#include <vector>

#include "platform/GL.h"
#include "platform/linux/fonts/FontObject.h"

class GlyphTessellator {
 public:
  using Contour = std::vector<OutlinePoint>;

  GlyphTessellator();

  /// Computes boundary and triangles of a glyph. Removes overlaps first, so that walls are only on the
  /// boundary of the filled area and share their vertices with the faces.
  /// @return false if memory runs out or GLU fails
  bool Run(const GlyphOutline& aOutline);

  /// Returns the boundary of the filled area: outer contours counterclockwise, holes clockwise.
  const std::vector<Contour>& Boundary() const noexcept { return m_vBoundary; }
  /// Returns the triangles of the filled area: counterclockwise, three points each.
  const std::vector<OutlinePoint>& Triangles() const noexcept { return m_vTriangles; }

 private:
  using Vertex = std::array<double, 3>;

  enum class Output { kBoundary, kTriangles };

  /// @param aWinding GLU_TESS_WINDING_ODD or GLU_TESS_WINDING_NONZERO
  bool Tessellate(const std::vector<Contour>& aContours, int aWinding, Output aOutput);
  void BeginPart() noexcept;
  void PutVertex(const Vertex& aVertex) noexcept;
  void* Combine(const double* aAt) noexcept;

  std::unique_ptr<GLUtesselator, decltype(&gluDeleteTess)> m_pTess;
  std::deque<Vertex> m_Vertices;  // a deque, since GLU keeps pointers to the elements
  std::vector<Contour> m_vBoundary;
  std::vector<OutlinePoint> m_vTriangles;
  Output m_Output = Output::kBoundary;  // of the running pass
  bool m_bFailed = false;
};
