// PSelectEvent: one pass of the painter in GL's selection mode. Draw thread, with GL current.
// Pick matrix, projection and eye are all in the model-view matrix, and the projection matrix is the
// identity. So PushModelviewMatrix(1) of a painter removes all three, and PushProjectionMatrix has no effect
// on them.

#include <gllib/IGLCoord.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include "context/GLContext.h"
#include "context/selection/PSelectEvent.h"
#include "diagnostics/ClientCheck.h"
#include "platform/GL.h"
#include "view/GLCanvas.h"

namespace {

constexpr int kRecordWords = 4;  // the name stack has one element: count, least depth, greatest depth, name

}  // namespace

void PSelectEvent::RunPickPass(const GLDATA_POINT& aPoint1, const GLDATA_POINT& aPoint2, int* aArraySize,
                               ULONG* aIDArray) noexcept {
  const int capacity = *aArraySize;
  const int records = std::min(capacity, INT_MAX / kRecordWords);
  const std::size_t words = static_cast<std::size_t>(records) * kRecordWords;
  unsigned* const buffer = m_Records.Reserve(words);
  if (buffer == nullptr) {
    *aArraySize = 0;
    m_hResult = E_OUTOFMEMORY;
    return;
  }
  glSelectBuffer(static_cast<GLsizei>(words), buffer);
  glRenderMode(GL_SELECT);
  glInitNames();
  glPushName(0);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  const ViewRectangle view = SetupView();
  SetupPickMatrix(view, aPoint1, aPoint2);
  glClear(GL_DEPTH_BUFFER_BIT);
  SetupProjection(static_cast<double>(view.width) / view.height);
  static_cast<GLCanvas*>(m_Context.Canvas())->NoteRenderingContext(GLPass::Here()->Target().m_uNumber);
  m_Context.Canvas()->ResetModelview6d(&m_View.m_sEye);
  SetupClipPlanes();
  CompiledLists& lists = m_Context.WindowTarget().m_Lists.Compiled();
  lists.SetPicking(true);
  DrawScene(lists);
  lists.SetPicking(false);
  glFlush();
  std::fill_n(aIDArray, capacity, ULONG{0});
  *aArraySize = ReadHits(glRenderMode(GL_RENDER), buffer, records, aIDArray);
}

void PSelectEvent::DrawScene(CompiledLists& aLists) noexcept {
  if (!m_pPainter) return;
  IGLCanvas* const canvas = m_Context.Canvas();
  const GLCanvas::Recording recording(static_cast<GLCanvas&>(*canvas), aLists.Recorder());
  const ClientCheck check("IGLPainter::Draw in a selection");
  m_pPainter->Draw(canvas, &m_Context, m_Request.m_pViewer);
}

void PSelectEvent::ReadView() noexcept {
  IGLViewer& viewer = *m_Request.m_pViewer;
  LONG clipped = 0, scaled = 0, ortho = 0;
  viewer.IsClipped(&clipped);
  viewer.IsClipScaled(&scaled);
  viewer.IsOrtho(&ortho);
  m_View.m_bClipped = clipped != 0;
  m_View.m_bScaled = scaled != 0;
  m_View.m_bOrtho = ortho != 0;
  viewer.GetClipX(&m_View.m_Clip.x);
  viewer.GetClipY(&m_View.m_Clip.y);
  viewer.GetClipWidth(&m_View.m_Clip.width);
  viewer.GetClipHeight(&m_View.m_Clip.height);
  viewer.GetOrthoExtents(&m_View.m_sLow, &m_View.m_sHigh);
  viewer.GetEyeFovy_DEG(&m_View.m_dFovy);
  viewer.GetEyeAspect(&m_View.m_dAspect);
  viewer.GetEyeZNear(&m_View.m_dNear);
  viewer.GetEyeZFar(&m_View.m_dFar);
  GLPtr<IGLCoord> eye;
  viewer.GetCoord(eye.Put());
  if (eye) eye->GetMatrix6d(&m_View.m_sEye);
}

// Sets scissor and viewport as for the viewer's frames. Returns the visible rectangle.
PSelectEvent::ViewRectangle PSelectEvent::SetupView() const noexcept {
  const ViewRectangle& clip = m_View.m_Clip;
  if (!m_View.m_bClipped) {
    glDisable(GL_SCISSOR_TEST);
    glViewport(0, 0, m_iWidth, m_iHeight);
    return {0, 0, m_iWidth, m_iHeight};
  }
  glEnable(GL_SCISSOR_TEST);
  glScissor(clip.x, clip.y, clip.width, clip.height);
  if (m_View.m_bScaled) {
    glViewport(clip.x, clip.y, clip.width, clip.height);
  } else {
    glViewport(0, 0, m_iWidth, m_iHeight);
  }
  return clip;
}

// The points range from -1 to 1 over the visible rectangle; the pick matrix refers to the current viewport.
void PSelectEvent::SetupPickMatrix(const ViewRectangle& aView, const GLDATA_POINT& aPoint1,
                                   const GLDATA_POINT& aPoint2) noexcept {
  const double x1 = aView.x + (aPoint1.x + 1.0) * (aView.width * 0.5);
  const double y1 = aView.y + (aPoint1.y + 1.0) * (aView.height * 0.5);
  const double x2 = aView.x + (aPoint2.x + 1.0) * (aView.width * 0.5);
  const double y2 = aView.y + (aPoint2.y + 1.0) * (aView.height * 0.5);
  const double width = std::fabs(x2 - x1), height = std::fabs(y2 - y1);
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  gluPickMatrix((x1 + x2) * 0.5, (y1 + y2) * 0.5, width == 0.0 ? 1.0 : width, height == 0.0 ? 1.0 : height,
                viewport);
}

// Multiplies by the same projection as the viewer's frames.
void PSelectEvent::SetupProjection(double aAspect) const noexcept {
  if (!m_View.m_bOrtho) {
    gluPerspective(m_View.m_dFovy, m_View.m_dAspect * aAspect, m_View.m_dNear, m_View.m_dFar);
    return;
  }
  const GLDATA_POINT &low = m_View.m_sLow, &high = m_View.m_sHigh;
  if (1.0 >= aAspect) {
    glOrtho(low.x, high.x, low.y / aAspect, high.y / aAspect, low.z, high.z);
  } else {
    glOrtho(low.x * aAspect, high.x * aAspect, low.y, high.y, low.z, high.z);
  }
}

void PSelectEvent::SetupClipPlanes() const noexcept {
  for (const GLClipPlane& plane : m_aClipPlanes) SendClipPlane(plane);
}

// Records with the name 0 are not selectable. GL reports an overflow of the buffer by a negative number of
// hits.
int PSelectEvent::ReadHits(int aHits, const unsigned* aRecords, int aCapacity,
                           ULONG* aIDArray) const noexcept {
  if (aHits < 0)
    LogWarning("a selection found more identifiers than the host's array holds, %d: it returns none",
               aCapacity);
  int count = 0;
  GLuint best = 0;
  for (int i = 0; i < std::min(aHits, aCapacity); ++i) {
    const GLuint* record = aRecords + static_cast<std::size_t>(i) * kRecordWords;
    const GLuint depth = record[1], name = record[3];
    if (name == 0) continue;
    if (!m_Request.m_bSelectClosest) {
      aIDArray[count++] = name;
    } else if (count == 0 || depth < best) {
      aIDArray[0] = name;
      best = depth;
      count = 1;
    }
  }
  return count;
}
