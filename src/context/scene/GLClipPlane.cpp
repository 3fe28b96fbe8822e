// GLClipPlane: sends a plane to GL. Draw thread, with the eye loaded in the model-view matrix.

#include "context/scene/GLClipPlane.h"

#include "platform/GL.h"

void SendClipPlane(const GLClipPlane& aPlane) noexcept {
  const GPlaneEquation equation = aPlane.m_sPlane.GetEquation();
  const GLdouble coefficients[4] = {equation.A, equation.B, equation.C, equation.D};
  glEnable(static_cast<GLenum>(aPlane.m_iName));
  glClipPlane(static_cast<GLenum>(aPlane.m_iName), coefficients);
}
