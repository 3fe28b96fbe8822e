// ViewSetup: sends one pass's view to GL. Draw thread, with the rendering context current.

#include "view/ViewSetup.h"

#include <gllib/IGLCanvas.h>

#include <cmath>

#include "platform/GL.h"
#include "view/AspectFit.h"

// In a pick all matrices are in GL_MODELVIEW. So PushModelviewMatrix(1) of a painter removes all of them, and
// PushProjectionMatrix has no effect on them.
void ViewSetup::ApplyProjection() const noexcept {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  if (m_Pick) {
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    ApplyViewport();
    MultiplyPickMatrix();
    glClear(GL_DEPTH_BUFFER_BIT);
    MultiplyProjection();
  } else {
    ApplyViewport();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);  // limited to the viewer's area by the scissor
    MultiplyProjection();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
  }
}

void ViewSetup::ApplyEye(IGLCanvas& aCanvas) const noexcept {
  GLDATA_MATRIX6D placement = m_sEye;
  aCanvas.ResetModelview6d(&placement);
}

void ViewSetup::ApplyViewport() const noexcept {
  if (m_bClipped) {
    glEnable(GL_SCISSOR_TEST);
    glScissor(m_Visible.x, m_Visible.y, m_Visible.width, m_Visible.height);
  } else {
    glDisable(GL_SCISSOR_TEST);
  }
  glViewport(m_Viewport.x, m_Viewport.y, m_Viewport.width, m_Viewport.height);
}

// The pick matrix refers to GL's viewport, which GL may have limited.
void ViewSetup::MultiplyPickMatrix() const noexcept {
  const auto& [corner1, corner2] = *m_Pick;
  const double x1 = m_Visible.x + (corner1.x + 1.0) * (m_Visible.width * 0.5);
  const double y1 = m_Visible.y + (corner1.y + 1.0) * (m_Visible.height * 0.5);
  const double x2 = m_Visible.x + (corner2.x + 1.0) * (m_Visible.width * 0.5);
  const double y2 = m_Visible.y + (corner2.y + 1.0) * (m_Visible.height * 0.5);
  const double width = std::fabs(x2 - x1), height = std::fabs(y2 - y1);
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  gluPickMatrix((x1 + x2) * 0.5, (y1 + y2) * 0.5, width == 0.0 ? 1.0 : width, height == 0.0 ? 1.0 : height,
                viewport);
}

void ViewSetup::MultiplyProjection() const noexcept {
  if (m_bOrtho) {
    const AspectFit fit(Aspect());
    glOrtho(m_sLow.x * fit.m_dWidth, m_sHigh.x * fit.m_dWidth, m_sLow.y / fit.m_dHeight,
            m_sHigh.y / fit.m_dHeight, m_sLow.z, m_sHigh.z);
  } else {
    gluPerspective(m_dFovy, Aspect() * m_dAspect, m_dNear, m_dFar);
  }
}
