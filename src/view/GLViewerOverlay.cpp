// GLViewer: the overlay pass of a frame, after the painter. Draw thread, with the rendering context current.

#include <gllib/IGLContext.h>

#include "component/GLContextSite.h"
#include "component/Module.h"
#include "diagnostics/ClientCheck.h"
#include "geometry/Geometry.h"
#include "platform/GL.h"
#include "view/GLViewer.h"

void GLViewer::DrawOverlay(IGLCanvas* aCanvas, IGLContext* aContext, const GLContextSite& aSite) noexcept {
  const bool drawFrame = m_bClipped && m_bClipFrameVisible;
  const bool drawGauges = m_bGaugesVisible && HasGauges();
  if (!drawFrame && !drawGauges) return;  // axes are drawn only together with a frame or gauges

  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadIdentity();
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  glPushAttrib(GL_LIGHTING_BIT);
  glDisable(GL_LIGHTING);
  if (aSite.HasClipPlanes()) {
    const int planes = g_iMaxClipPlanes;
    for (int i = 0; i < planes; ++i) glDisable(GL_CLIP_PLANE0 + static_cast<GLenum>(i));
  }

  if (drawFrame) DrawFrame();
  if (drawGauges) DrawGauges(aCanvas, aContext);
  if (m_bShowAxes) DrawAxes(aContext, aSite);

  glPopAttrib();
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
  glPopMatrix();
}

bool GLViewer::HasGauges() noexcept {
  int size = 0;
  m_pGauges->GetSize(&size);
  return size > 0;
}

// Draws a rectangle in normalised device coordinates, just inside the edge of the view.
void GLViewer::DrawFrame() noexcept {
  const GLDATA_RGBA color = m_sFrameColor;
  const float c = 1.0f - m_fFrameOffset;
  glLineWidth(m_fFrameThickness);
  glDisable(GL_LINE_STIPPLE);
  glColor4f(color.m_fRed, color.m_fGreen, color.m_fBlue, color.m_fAlpha);
  glBegin(GL_LINES);
  glVertex3f(c, c, 0.0f);
  glVertex3f(-c, c, 0.0f);
  glVertex3f(-c, c, 0.0f);
  glVertex3f(-c, -c, 0.0f);
  glVertex3f(-c, -c, 0.0f);
  glVertex3f(c, -c, 0.0f);
  glVertex3f(c, -c, 0.0f);
  glVertex3f(c, c, 0.0f);
  glEnd();
}

void GLViewer::DrawGauges(IGLCanvas* aCanvas, IGLContext* aContext) noexcept {
  GLPOSITION position{};
  GLPtr<IUnknown> member;
  for (HRESULT found = m_pGauges->GetFirst(&position, member.Put()); SUCCEEDED(found);
       found = m_pGauges->GetNext(&position, member.Put())) {
    // AddGauge stored the IGLViewerGauge pointer unchanged.
    auto* gauge = static_cast<IGLViewerGauge*>(member.Get());
    LONG visible = 0;
    gauge->IsVisible(&visible);
    if (visible == 0) continue;
    const ClientCheck check("IGLViewerGauge::Draw");
    gauge->Draw(aCanvas, aContext);
  }
}

namespace {

constexpr float kFigureSide = 64.0f;  // side of the square of the axes figure, in pixels
constexpr float kAxisLength = 30.0f;

void FigureSquare() noexcept {
  glBegin(GL_QUADS);
  glVertex3f(0.0f, 0.0f, 0.0f);
  glVertex3f(kFigureSide, 0.0f, 0.0f);
  glVertex3f(kFigureSide, kFigureSide, 0.0f);
  glVertex3f(0.0f, kFigureSide, 0.0f);
  glEnd();
}

void Axis(float aX, float aY, float aZ) noexcept {
  glColor4f(aX, aY, aZ, 1.0f);  // x red, y green, z blue
  glVertex3f(0.0f, 0.0f, 0.0f);
  glVertex3f(aX * kAxisLength, aY * kAxisLength, aZ * kAxisLength);
}

}  // namespace

// Draws the axes figure in the lower left corner. The unit is one pixel of the whole window.
void GLViewer::DrawAxes(IGLContext* aContext, const GLContextSite& aSite) noexcept {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0.0, aSite.ViewportWidth(), 0.0, aSite.ViewportHeight(), -60.0, 60.0);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glTranslatef(0.375f, 0.375f, 0.0f);  // moves vertices from pixel corners to pixel centres
  glLineWidth(1.0f);
  glDisable(GL_LINE_STIPPLE);
  glDisable(GL_DEPTH_TEST);
  glTranslatef(2.0f, 2.0f, 0.0f);
  glPushMatrix();

  glColor4f(0.0f, 0.0f, 0.0f, 0.5f);
  FigureSquare();
  glColor4f(1.0f, 1.0f, 1.0f, 0.5f);
  glPolygonMode(GL_FRONT, GL_LINE);
  FigureSquare();
  glPolygonMode(GL_FRONT, GL_FILL);

  glTranslatef(kFigureSide / 2, kFigureSide / 2, 0.0f);
  TurnWithEye();
  glBegin(GL_LINES);
  Axis(1.0f, 0.0f, 0.0f);
  Axis(0.0f, 1.0f, 0.0f);
  Axis(0.0f, 0.0f, 1.0f);
  glEnd();

  if (!m_pAxisFont) CreateAxisFont(*aContext);
  glPopMatrix();
  if (m_pAxisFont) PrintAxisNames();
}

// The context would keep the font until its own end. Only the viewer keeps it, so it ends with the viewer.
void GLViewer::CreateAxisFont(IGLContext& aContext) noexcept {
  if (SUCCEEDED(aContext.CreateSystemFont(m_pAxisFont.Put()))) aContext.DestroyFont(m_pAxisFont.Get());
}

// Applies the inverse of the eye's rotation, without its position.
void GLViewer::TurnWithEye() noexcept {
  GLDATA_MATRIX6D eye{};
  m_pCoord->GetMatrix6d(&eye);
  glRotated(-eye.m_dAngleZ * kDegreesFromRadians, 0.0, 0.0, 1.0);
  glRotated(-eye.m_dAngleY * kDegreesFromRadians, 0.0, 1.0, 0.0);
  glRotated(-eye.m_dAngleX * kDegreesFromRadians, 1.0, 0.0, 0.0);
}

// Prints X, Y and Z in the corner of the square, as a legend of the colours.
void GLViewer::PrintAxisNames() noexcept {
  const auto print = [this](OLECHAR aName, float aRed, float aGreen, float aBlue) {
    GLDATA_POINT origin{0.0, 0.0, 0.0};
    const BSTR text = SysAllocStringLen(&aName, 1);
    glColor4f(aRed, aGreen, aBlue, 1.0f);
    m_pAxisFont->Print(text, &origin);
    SysFreeString(text);
  };
  glTranslatef(4.0f, 4.0f, 0.0f);
  print('X', 1.0f, 0.0f, 0.0f);
  glTranslatef(10.0f, 0.0f, 0.0f);
  print('Y', 0.0f, 1.0f, 0.0f);
  glTranslatef(10.0f, 0.0f, 0.0f);
  print('Z', 0.0f, 0.0f, 1.0f);
}
