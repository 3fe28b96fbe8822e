// PSelectEvent: the run of one selection and the subtraction of what isn't wholly inside its box.
// On the draw thread between two frames.

#include "context/selection/PSelectEvent.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <new>
#include <utility>

#include "context/GLContext.h"
#include "context/frame/GLPass.h"

namespace {

constexpr double kMargin = 0.01;  // how far a strip reaches beyond the box, in the points' units
constexpr auto kPollStep = std::chrono::milliseconds(10);

/// Takes every identifier out that is among aFound; the last of the list fills its place.
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

PSelectEvent::PSelectEvent(GLContext& aContext, IGLViewer& aViewer, GLDATA_POINT* aPoint1,
                           GLDATA_POINT* aPoint2, bool aSelectClosest, bool aSelectEnclosed, int* aArraySize,
                           ULONG* aIDArray, std::shared_ptr<PSelectOutcome> aOutcome) noexcept
    : PEvent(&aContext, true, true),
      m_Context(aContext),
      m_Viewer(aViewer),
      m_pPoint1(aPoint1),
      m_pPoint2(aPoint2),
      m_bSelectClosest(aSelectClosest),
      m_bSelectEnclosed(aSelectEnclosed),
      m_piArraySize(aArraySize),
      m_puIDArray(aIDArray),
      m_pOutcome(std::move(aOutcome)) {}

PSelectEvent::~PSelectEvent() { m_pOutcome->Set(E_GL_BADSTATE); }

void PSelectEvent::Run() {
  const PLock calls(m_Context.ClientCalls());  // a detach on another thread waits for all passes
  GLPass pass(m_Context.Lock(), m_Context.WindowTarget());
  if (!pass.IsCurrent()) return;  // stays active: the next cycle has a rendering context
  m_Context.BuildFonts();
  m_Context.ResetGLClipPlanes();
  pass.Target().m_Lists.Compiled().Check();
  TakeScene();
  pass.ReleaseLock();
  const int capacity = *m_piArraySize;
  RunPickPass(*m_pPoint1, *m_pPoint2, m_piArraySize, m_puIDArray);
  if (m_bSelectEnclosed && *m_piArraySize != 0) {
    const std::unique_ptr<ULONG[]> scratch(new (std::nothrow) ULONG[static_cast<std::size_t>(capacity)]);
    if (scratch != nullptr) {
      KeepEnclosed(capacity, scratch.get());
    } else {
      *m_piArraySize = 0;
      m_hResult = E_OUTOFMEMORY;
    }
  }
  m_pPainter.Reset();
  SetActive(false);
  m_pOutcome->Set(m_hResult);
}

void PSelectEvent::TakeScene() noexcept {
  m_pPainter = m_Context.Painter().Get();
  m_iWidth = m_Context.ViewportWidth();
  m_iHeight = m_Context.ViewportHeight();
  ReadView();
  try {
    m_aClipPlanes = m_Context.Planes().All();
  } catch (const std::bad_alloc&) {
    m_aClipPlanes.clear();
    m_hResult = E_OUTOFMEMORY;
  }
}

// Drops what shows up in one of four thin strips just outside the box: it crosses an edge.
void PSelectEvent::KeepEnclosed(int aCapacity, ULONG* aScratch) noexcept {
  if (m_pPoint1->x > m_pPoint2->x) std::swap(m_pPoint1->x, m_pPoint2->x);
  if (m_pPoint1->y > m_pPoint2->y) std::swap(m_pPoint1->y, m_pPoint2->y);
  const double x1 = m_pPoint1->x, y1 = m_pPoint1->y, x2 = m_pPoint2->x, y2 = m_pPoint2->y;
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
  int& size = *m_piArraySize;
  if (size == 0) return;
  int found = aCapacity;
  RunPickPass(aPoint1, aPoint2, &found, aScratch);
  RemoveFound(&size, m_puIDArray, aScratch, found);
}

void PSelectOutcome::Set(HRESULT aResult) noexcept {
  const std::scoped_lock lock(m_Lock);
  if (!std::exchange(m_bDone, true)) m_hResult = aResult;
  m_Changed.notify_all();
}

bool PSelectOutcome::Wait() noexcept {
  std::unique_lock lock(m_Lock);
  return m_Changed.wait_for(lock, kPollStep, [this] { return m_bDone; });
}

HRESULT PSelectOutcome::Result() noexcept {
  const std::scoped_lock lock(m_Lock);
  return m_hResult;
}
