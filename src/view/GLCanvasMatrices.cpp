// GLCanvas: the matrix operations, all in double precision. Draw thread.
//
// The 6d operations change the matrix that is selected. The other operations that change a matrix select
// GL_MODELVIEW or GL_PROJECTION. Those that select GL_PROJECTION restore the mode, or select GL_MODELVIEW
// after a push or pop.

#include "component/GLContextSite.h"
#include "diagnostics/GLErrorCheck.h"
#include "geometry/GMatrix.h"
#include "geometry/Geometry.h"
#include "platform/GL.h"
#include "view/GLCanvas.h"

namespace {

/// Inverts a matrix. A singular matrix is not changed.
/// @return S_OK; E_OUTOFMEMORY if memory is insufficient, and the matrix is not changed
HRESULT Invert(GLDATA_MATRIX16D& aMatrix) noexcept {
  try {
    // GL stores columns and GMatrix stores rows. No transposition is needed, since it commutes with the
    // inverse.
    GMatrix matrix(4, 4, &aMatrix.m[0][0]);
    if (!matrix.Invert()) return S_OK;
    for (int i = 0; i < 4; ++i) {
      for (int j = 0; j < 4; ++j) aMatrix.m[i][j] = matrix.GetElement(i, j);
    }
    return S_OK;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

/// Selects GL_PROJECTION during a scope and restores the former mode. Makes no call if it is already
/// selected.
class ProjectionMode {
 public:
  ProjectionMode() noexcept {
    glGetIntegerv(GL_MATRIX_MODE, &m_iMode);
    if (m_iMode != GL_PROJECTION) glMatrixMode(GL_PROJECTION);
  }
  ~ProjectionMode() {
    if (m_iMode != GL_PROJECTION) glMatrixMode(static_cast<GLenum>(m_iMode));
  }
  ProjectionMode(const ProjectionMode&) = delete;
  ProjectionMode& operator=(const ProjectionMode&) = delete;

 private:
  GLint m_iMode = GL_MODELVIEW;
};

}  // namespace

HRESULT GLCanvas::SetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept {
  DrawsWhole();
  if (aMatrix == nullptr) return E_INVALIDARG;
  glTranslated(aMatrix->x, aMatrix->y, aMatrix->z);
  glRotated(aMatrix->m_dAngleX * kDegreesFromRadians, 1.0, 0.0, 0.0);
  glRotated(aMatrix->m_dAngleY * kDegreesFromRadians, 0.0, 1.0, 0.0);
  glRotated(aMatrix->m_dAngleZ * kDegreesFromRadians, 0.0, 0.0, 1.0);
  return S_OK;
}

HRESULT GLCanvas::ResetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept {
  DrawsWhole();
  if (aMatrix == nullptr) return E_INVALIDARG;
  // The inverse of SetModelview6d: its steps in reverse order, with negated values.
  glRotated(-aMatrix->m_dAngleZ * kDegreesFromRadians, 0.0, 0.0, 1.0);
  glRotated(-aMatrix->m_dAngleY * kDegreesFromRadians, 0.0, 1.0, 0.0);
  glRotated(-aMatrix->m_dAngleX * kDegreesFromRadians, 1.0, 0.0, 0.0);
  glTranslated(-aMatrix->x, -aMatrix->y, -aMatrix->z);
  return S_OK;
}

HRESULT GLCanvas::SetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept {
  DrawsWhole();
  if (aMatrix == nullptr) return E_INVALIDARG;
  glMatrixMode(GL_MODELVIEW);
  glMultMatrixd(&aMatrix->m[0][0]);
  return S_OK;
}

HRESULT GLCanvas::ResetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept {
  DrawsWhole();
  if (aMatrix == nullptr) return E_INVALIDARG;
  GLDATA_MATRIX16D inverse = *aMatrix;
  if (const HRESULT result = Invert(inverse); FAILED(result)) return result;
  glMatrixMode(GL_MODELVIEW);
  glMultMatrixd(&inverse.m[0][0]);
  return S_OK;
}

HRESULT GLCanvas::GetModelviewMatrix(GLDATA_MATRIX16D* aMatrix) noexcept {
  if (aMatrix == nullptr) return E_INVALIDARG;
  if (!HasGL()) return E_GL_BADSTATE;
  GLDATA_MATRIX16D inverse{};
  glGetDoublev(GL_MODELVIEW_MATRIX, &inverse.m[0][0]);
  if (const HRESULT result = Invert(inverse); FAILED(result)) return result;
  *aMatrix = inverse;
  return S_OK;
}

HRESULT GLCanvas::GetRawModelviewMatrix(GLDATA_MATRIX16D* aMatrix) noexcept {
  if (aMatrix == nullptr) return E_INVALIDARG;
  if (!HasGL()) return E_GL_BADSTATE;
  glGetDoublev(GL_MODELVIEW_MATRIX, &aMatrix->m[0][0]);
  return S_OK;
}

HRESULT GLCanvas::PushModelviewMatrix(LONG aLoadIdentity) noexcept {
  const GLErrorCheck check("IGLCanvas::PushModelviewMatrix");
  DrawsWhole();
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  if (aLoadIdentity != 0) glLoadIdentity();
  return S_OK;
}

HRESULT GLCanvas::PopModelviewMatrix() noexcept {
  const GLErrorCheck check("IGLCanvas::PopModelviewMatrix");
  DrawsWhole();
  glMatrixMode(GL_MODELVIEW);
  glPopMatrix();
  return S_OK;
}

HRESULT GLCanvas::Translate(GLDATA_POINT* aOrigin) noexcept {
  DrawsWhole();
  if (aOrigin == nullptr) return E_INVALIDARG;
  glMatrixMode(GL_MODELVIEW);
  glTranslated(aOrigin->x, aOrigin->y, aOrigin->z);
  return S_OK;
}

HRESULT GLCanvas::Rotate_RAD(double aAngle, GLDATA_POINT* aVector) noexcept {
  DrawsWhole();
  if (aVector == nullptr) return E_INVALIDARG;
  glMatrixMode(GL_MODELVIEW);
  glRotated(aAngle * kDegreesFromRadians, aVector->x, aVector->y, aVector->z);
  return S_OK;
}

HRESULT GLCanvas::Scale(GLDATA_POINT* aScale) noexcept {
  DrawsWhole();
  if (aScale == nullptr) return E_INVALIDARG;
  glMatrixMode(GL_MODELVIEW);
  glScaled(aScale->x, aScale->y, aScale->z);
  return S_OK;
}

HRESULT GLCanvas::PushProjectionMatrix(LONG aLoadIdentity, GLDATA_POINT* aNewExtents) noexcept {
  const GLErrorCheck check("IGLCanvas::PushProjectionMatrix");
  DrawsWhole();
  constexpr double kDepth = 100000.0;
  const GLSiteLink::Use site(aLoadIdentity != 0 ? m_pContext.get() : nullptr);
  if (aLoadIdentity != 0 && !site) return E_GL_BADSTATE;

  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  if (aLoadIdentity != 0) {
    GLint mode = GL_RENDER;
    glGetIntegerv(GL_RENDER_MODE, &mode);
    if (mode != GL_SELECT) {  // a pick pass has its projection in the model-view matrix
      const double aspect = static_cast<double>(site->ViewportWidth()) / site->ViewportHeight();
      const double halfX = 1.0 > aspect ? 1.0 : aspect;
      const double halfY = 1.0 > aspect ? 1.0 / aspect : 1.0;
      glLoadIdentity();
      glOrtho(-halfX, halfX, -halfY, halfY, -kDepth, kDepth);
      if (aNewExtents != nullptr) *aNewExtents = {2.0 * halfX, 2.0 * halfY, 2.0 * kDepth};
    }
  }
  glMatrixMode(GL_MODELVIEW);
  return S_OK;
}

HRESULT GLCanvas::PopProjectionMatrix() noexcept {
  const GLErrorCheck check("IGLCanvas::PopProjectionMatrix");
  DrawsWhole();
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
  return S_OK;
}

HRESULT GLCanvas::Ortho(double dLeft, double dRight, double dBottom, double dTop, double dZNear,
                        double dZFar) noexcept {
  const GLErrorCheck check("IGLCanvas::Ortho");
  DrawsWhole();
  const ProjectionMode mode;
  glLoadIdentity();
  glOrtho(dLeft, dRight, dBottom, dTop, dZNear, dZFar);
  return S_OK;
}

HRESULT GLCanvas::Perspective(double dFovY, double dAspect, double dZNear, double dZFar) noexcept {
  const GLErrorCheck check("IGLCanvas::Perspective");
  DrawsWhole();
  const ProjectionMode mode;
  glLoadIdentity();
  gluPerspective(dFovY, dAspect, dZNear, dZFar);
  return S_OK;
}
