// PSelectEvent: runs one selection, and removes identifiers that are not entirely inside its box.
// Draw thread, between two frames.

#include "context/selection/PSelectEvent.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <utility>

#include "context/GLContext.h"
#include "context/frame/GLPass.h"
#include "view/GLViewer.h"

namespace {

constexpr double kMargin = 0.01;  // width of a strip outside the box, in the units of the points
constexpr auto kPollStep = std::chrono::milliseconds(10);

/// Removes all identifiers that are in aFound. The last element of the list replaces a removed one.
void RemoveFound(int* aSize, ULONG* aIDArray, ULONG* aFound, int aFoundSize) noexcept {
  std::sort(aFound, aFound + aFoundSize);
  for (int i = 0; i < *aSize;) {
    if (std::binary_search(aFound, aFound + aFoundSize, aIDArray[i])) {
      aIDArray[i] = aIDArray[--*aSize];
    } else {
      ++i;
    }
  }
}

}  // namespace

PSelectEvent::PSelectEvent(GLContext& aContext) noexcept
    : PEvent(&aContext, Lifetime::kReusable), m_Context(aContext) {}

bool PSelectEvent::Begin(const Request& aRequest, std::shared_ptr<PSelectEvent> aSelf) noexcept {
  const std::scoped_lock lock(m_OutcomeLock);
  if (m_pQueued != nullptr) return false;
  m_Request = aRequest;
  m_hResult = S_OK;
  m_bEnded = false;
  m_hOutcome = E_GL_BADSTATE;
  m_pQueued = std::move(aSelf);
  Activate();
  return true;
}

void PSelectEvent::Run() {
  const PLock calls(m_Context.ClientCalls());  // a detach on another thread waits for all passes
  GLPass pass(m_Context.Lock(), m_Context.WindowTarget());
  if (!pass.IsCurrent()) {  // not created yet, or the driver refuses it: the caller must not wait for it
    Deactivate();
    return End(E_GL_BADSTATE);
  }
  m_Context.BuildFonts();
  m_Context.ResetGLClipPlanes();
  pass.Target().m_Lists.Compiled().Check();
  TakeScene();
  pass.ReleaseLock();
  const int capacity = *m_Request.m_piArraySize;
  RunPickPass(*m_Request.m_pPoint1, *m_Request.m_pPoint2, m_Request.m_piArraySize, m_Request.m_puIDArray);
  if (m_Request.m_bSelectEnclosed && *m_Request.m_piArraySize != 0) {
    if (ULONG* crossing = m_Crossing.Reserve(static_cast<std::size_t>(capacity))) {
      KeepEnclosed(capacity, crossing);
    } else {
      *m_Request.m_piArraySize = 0;
      m_hResult = E_OUTOFMEMORY;
    }
  }
  m_pPainter.Reset();
  Deactivate();
  End(m_hResult);
}

void PSelectEvent::TakeScene() noexcept {
  m_pPainter = m_Context.Painter().Get();
  m_Setup = static_cast<GLViewer*>(m_Request.m_pViewer)
                ->Setup(m_Context.ViewportWidth(), m_Context.ViewportHeight());
  try {
    m_aClipPlanes = m_Context.Planes().All();
  } catch (const std::bad_alloc&) {
    m_aClipPlanes.clear();
    m_hResult = E_OUTOFMEMORY;
  }
}

// Removes identifiers that are found in one of four thin strips just outside the box, because they cross an
// edge.
void PSelectEvent::KeepEnclosed(int aCapacity, ULONG* aScratch) noexcept {
  GLDATA_POINT &point1 = *m_Request.m_pPoint1, &point2 = *m_Request.m_pPoint2;
  if (point1.x > point2.x) std::swap(point1.x, point2.x);
  if (point1.y > point2.y) std::swap(point1.y, point2.y);
  const double x1 = point1.x, y1 = point1.y, x2 = point2.x, y2 = point2.y;
  const std::pair<GLDATA_POINT, GLDATA_POINT> strips[] = {
      {{x1 - kMargin, y1, 0}, {x1, y2, 0}},  // left
      {{x1, y2, 0}, {x2, y2 + kMargin, 0}},  // top
      {{x2, y1, 0}, {x2 + kMargin, y2, 0}},  // right
      {{x1, y1 - kMargin, 0}, {x2, y1, 0}},  // bottom
  };
  for (const auto& [corner1, corner2] : strips) SubtractStrip(aCapacity, aScratch, corner1, corner2);
}

void PSelectEvent::SubtractStrip(int aCapacity, ULONG* aScratch, const GLDATA_POINT& aPoint1,
                                 const GLDATA_POINT& aPoint2) noexcept {
  int& size = *m_Request.m_piArraySize;
  if (size == 0) return;
  int found = aCapacity;
  RunPickPass(aPoint1, aPoint2, &found, aScratch);
  RemoveFound(&size, m_Request.m_puIDArray, aScratch, found);
}

void PSelectEvent::End(HRESULT aResult) noexcept {
  const std::scoped_lock lock(m_OutcomeLock);
  if (!std::exchange(m_bEnded, true)) m_hOutcome = aResult;
  m_Ended.notify_all();
}

void PSelectEvent::Drop() noexcept {
  End(E_GL_BADSTATE);
  std::shared_ptr<PSelectEvent> self;  // releasing it may delete this object
  const std::scoped_lock lock(m_OutcomeLock);
  self.swap(m_pQueued);
}

bool PSelectEvent::Wait() noexcept {
  std::unique_lock lock(m_OutcomeLock);
  return m_Ended.wait_for(lock, kPollStep, [this] { return m_bEnded; });
}

HRESULT PSelectEvent::Result() noexcept {
  const std::scoped_lock lock(m_OutcomeLock);
  return m_hOutcome;
}
