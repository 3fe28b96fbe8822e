// ViewSetup: what one pass of a viewer draws with: scissor, viewport, projection, eye, and the box of a pick.
// Frames, captures and selections apply it in the same way. Draw thread, with the rendering context current.

#pragma once

#include <gllib/GLTypes.h>

#include <optional>

struct IGLCanvas;

/// A copy of a viewer's values, from GLViewer::Setup. Later changes of the viewer do not affect the pass.
struct ViewSetup {
  /// A rectangle in pixels, from the lower left corner of the window or picture.
  struct Rectangle {
    int x, y, width, height;
  };
  /// Two corners of the box of a pick, in any order. x and y range from -1 to 1 over the visible rectangle.
  struct PickBox {
    GLDATA_POINT m_sCorner1, m_sCorner2;
  };

  Rectangle m_Viewport{};
  Rectangle m_Visible{};    ///< the clip rectangle, or the whole viewport
  bool m_bClipped = false;  ///< whether the scissor limits drawing to the visible rectangle
  bool m_bOrtho = true;
  GLDATA_POINT m_sLow{}, m_sHigh{};                            ///< extents of the parallel projection
  double m_dFovy = 0, m_dAspect = 1, m_dNear = 0, m_dFar = 0;  ///< of the perspective projection
  GLDATA_MATRIX6D m_sEye{};
  std::optional<PickBox> m_Pick;  ///< set in a selection only

  /// Returns width divided by height of the visible rectangle, also if the picture is not scaled to it.
  double Aspect() const noexcept { return static_cast<double>(m_Visible.width) / m_Visible.height; }

  /// Sets scissor, viewport and projection, and clears. Selects GL_MODELVIEW at the end.
  /// A frame has the projection in GL_PROJECTION, and the identity in GL_MODELVIEW. A pick has the identity
  /// in GL_PROJECTION, and the pick matrix and the projection in GL_MODELVIEW; it clears only the depth
  /// buffer.
  void ApplyProjection() const noexcept;
  /// Multiplies GL_MODELVIEW by the inverse of the eye's placement. After ApplyProjection.
  void ApplyEye(IGLCanvas& aCanvas) const noexcept;

 private:
  void ApplyViewport() const noexcept;
  void MultiplyPickMatrix() const noexcept;
  void MultiplyProjection() const noexcept;
};
