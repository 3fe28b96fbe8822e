// GLCanvas: primitives and the attributes of each vertex. Draw thread.
// These operations may run a million times per frame, so a vertex, normal, colour or identifier takes one GL
// call. They also report primitives, vertices and names to the recorder of an open list. Coordinates and
// normals are converted to float here.

#include "diagnostics/GLErrorCheck.h"
#include "platform/GL.h"
#include "view/GLCanvas.h"
#include "view/lists/ListRecorder.h"

inline void GLCanvas::BeginPrimitives(unsigned aMode) noexcept {
  if (m_pRecorder != nullptr) m_pRecorder->Begin(aMode);
  glBegin(aMode);
}

inline void GLCanvas::SendVertex(float aX, float aY, float aZ) noexcept {
  glVertex3f(aX, aY, aZ);
  if (m_pRecorder != nullptr) m_pRecorder->Vertex(aX, aY, aZ);
}

HRESULT GLCanvas::BeginDrawPoints() noexcept {
  BeginPrimitives(GL_POINTS);
  return S_OK;
}

HRESULT GLCanvas::BeginDrawLines() noexcept {
  BeginPrimitives(GL_LINES);
  return S_OK;
}

HRESULT GLCanvas::BeginDrawLineStrip() noexcept {
  BeginPrimitives(GL_LINE_STRIP);
  return S_OK;
}

HRESULT GLCanvas::BeginDrawLineLoop() noexcept {
  BeginPrimitives(GL_LINE_LOOP);
  return S_OK;
}

HRESULT GLCanvas::BeginDrawTriangles() noexcept {
  BeginPrimitives(GL_TRIANGLES);
  return S_OK;
}

HRESULT GLCanvas::BeginDrawTriangleStrip() noexcept {
  BeginPrimitives(GL_TRIANGLE_STRIP);
  return S_OK;
}

HRESULT GLCanvas::BeginDrawTriangleFan() noexcept {
  BeginPrimitives(GL_TRIANGLE_FAN);
  return S_OK;
}

HRESULT GLCanvas::BeginDrawQuads() noexcept {
  BeginPrimitives(GL_QUADS);
  return S_OK;
}

HRESULT GLCanvas::BeginDrawQuadStrip() noexcept {
  BeginPrimitives(GL_QUAD_STRIP);
  return S_OK;
}

HRESULT GLCanvas::BeginDrawPolygon() noexcept {
  BeginPrimitives(GL_POLYGON);
  return S_OK;
}

HRESULT GLCanvas::EndDrawVertices() noexcept {
  glEnd();
  if (m_pRecorder != nullptr) m_pRecorder->End();
  CheckGLErrors("IGLCanvas::EndDrawVertices");
  return S_OK;
}

HRESULT GLCanvas::Vertex(GLDATA_POINT* aPoint) noexcept {
  SendVertex(static_cast<float>(aPoint->x), static_cast<float>(aPoint->y), static_cast<float>(aPoint->z));
  return S_OK;
}

HRESULT GLCanvas::Vertex2d(double aX, double aY) noexcept {
  glVertex2f(static_cast<float>(aX), static_cast<float>(aY));
  if (m_pRecorder != nullptr) m_pRecorder->Vertex(static_cast<float>(aX), static_cast<float>(aY), 0.0f);
  return S_OK;
}

HRESULT GLCanvas::Vertex3d(double aX, double aY, double aZ) noexcept {
  SendVertex(static_cast<float>(aX), static_cast<float>(aY), static_cast<float>(aZ));
  return S_OK;
}

HRESULT GLCanvas::Vertex2f(float aX, float aY) noexcept {
  glVertex2f(aX, aY);
  if (m_pRecorder != nullptr) m_pRecorder->Vertex(aX, aY, 0.0f);
  return S_OK;
}

HRESULT GLCanvas::Vertex3f(float aX, float aY, float aZ) noexcept {
  SendVertex(aX, aY, aZ);
  return S_OK;
}

HRESULT GLCanvas::SetVertexNormal(GLDATA_POINT* Point) noexcept {
  glNormal3f(static_cast<float>(Point->x), static_cast<float>(Point->y), static_cast<float>(Point->z));
  return S_OK;
}

HRESULT GLCanvas::SetVertexNormal3d(double aX, double aY, double aZ) noexcept {
  glNormal3f(static_cast<float>(aX), static_cast<float>(aY), static_cast<float>(aZ));
  return S_OK;
}

HRESULT GLCanvas::SetVertexNormal3f(float aX, float aY, float aZ) noexcept {
  glNormal3f(aX, aY, aZ);
  return S_OK;
}

HRESULT GLCanvas::SetTestID(ULONG aID) noexcept {
  if (m_pRecorder != nullptr) m_pRecorder->Name(aID);
  glLoadName(aID);
  return S_OK;
}

HRESULT GLCanvas::SetVertexColor(GLDATA_RGBA* aColor) noexcept {
  glColor4f(aColor->m_fRed, aColor->m_fGreen, aColor->m_fBlue, aColor->m_fAlpha);
  return S_OK;
}

HRESULT GLCanvas::SetVertexLineWidth(float aValue) noexcept {
  glLineWidth(aValue);
  return S_OK;
}

HRESULT GLCanvas::SetVertexLineStipple(std::uint16_t aPattern, int aFactor) noexcept {
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(aFactor < 1 ? 1 : aFactor, aPattern);
  return S_OK;
}

HRESULT GLCanvas::SetVertexPointSize(float aValue) noexcept {
  glPointSize(aValue);
  return S_OK;
}

HRESULT GLCanvas::SetVertexEdgeFlag(LONG aIsEdge) noexcept {
  // For faces drawn as lines, Mesa's hits depend on edge flags of earlier primitives, not only on the current
  // flag.
  if (m_pRecorder != nullptr) m_pRecorder->Unbounded();
  glEdgeFlag(aIsEdge != 0 ? GL_TRUE : GL_FALSE);
  return S_OK;
}
