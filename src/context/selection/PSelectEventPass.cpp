// PSelectEvent: one pass of the painter in GL's selection mode. Draw thread, with GL current.

#include <algorithm>
#include <climits>

#include "context/GLContext.h"
#include "context/selection/PSelectEvent.h"
#include "diagnostics/ClientCheck.h"
#include "platform/GL.h"
#include "view/GLCanvas.h"

namespace {

constexpr int kRecordHead = 3;  // number of names, least depth, greatest depth; the names follow
constexpr int kRecordWords = kRecordHead + 1;  // the stack has one name, unless the painter nests names

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
  m_Setup.m_Pick = {aPoint1, aPoint2};
  m_Setup.ApplyProjection();
  static_cast<GLCanvas*>(m_Context.Canvas())->NoteRenderingContext(GLPass::Here()->Target().m_uNumber);
  m_Setup.ApplyEye(*m_Context.Canvas());
  SetupClipPlanes();
  CompiledLists& lists = m_Context.WindowTarget().m_Lists.Compiled();
  lists.BeginSelectionPass();
  DrawScene(lists);
  lists.EndSelectionPass();
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

void PSelectEvent::SetupClipPlanes() const noexcept {
  for (const GLClipPlane& plane : m_aClipPlanes) SendClipPlane(plane);
}

// A record has as many names as the name stack had. A painter may nest names with its own GL calls; then the
// innermost name is returned. Records without a name, or with the name 0, are skipped. A record with a name
// has at least kRecordWords words, so the buffer holds at most aCapacity of them. GL reports an overflow of
// the buffer by a negative number of hits.
int PSelectEvent::ReadHits(int aHits, const unsigned* aRecords, int aCapacity,
                           ULONG* aIDArray) const noexcept {
  if (aHits < 0)
    LogWarning("a selection found more identifiers than the host's array holds, %d: it returns none",
               aCapacity);
  int count = 0;
  GLuint best = 0;
  const GLuint* record = aRecords;
  for (int i = 0; i < aHits; ++i) {
    const GLuint names = record[0], depth = record[1], name = names != 0 ? record[2 + names] : 0;
    record += kRecordHead + names;
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
