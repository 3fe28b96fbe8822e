// GlyphTessellator: turns the polygons of a glyph into its boundary and the triangles between, by GLU's
// tessellator. One a build; the thread that made it.

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

  /// Resolves overlaps first, so that walls stand on the outer edge alone and meet the faces point by point.
  /// @return false when there is no memory or GLU gives up
  bool Run(const GlyphOutline& aOutline);

  /// The edge of what is filled: outer contours counterclockwise, holes clockwise.
  const std::vector<Contour>& Boundary() const noexcept { return m_vBoundary; }
  /// What is filled: counterclockwise, three points each.
  const std::vector<OutlinePoint>& Triangles() const noexcept { return m_vTriangles; }

 private:
  using Vertex = std::array<double, 3>;

  bool Tessellate(const std::vector<Contour>& aContours, bool aEvenOdd, bool aBoundaryOnly);
  void BeginPart() noexcept;
  void PutVertex(const Vertex& aVertex) noexcept;
  void* Combine(const double* aAt) noexcept;

  std::unique_ptr<GLUtesselator, decltype(&gluDeleteTess)> m_pTess;
  std::deque<Vertex> m_Vertices;  // GLU keeps pointers to them
  std::vector<Contour> m_vBoundary;
  std::vector<OutlinePoint> m_vTriangles;
  bool m_bBoundaryOnly = false;
  bool m_bFailed = false;
};
