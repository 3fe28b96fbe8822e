// GLContext: selection on the host's side. Any thread but the draw thread; the caller waits for the draw
// thread with nothing held but the right to select.

#include <memory>
#include <mutex>
#include <new>

#include "context/GLContext.h"
#include "context/control/DrawThreadWait.h"
#include "context/selection/PSelectEvent.h"
#include "platform/Log.h"

// The viewer that a host means, counted: it may be destroyed by another thread at any moment.
GLPtr<IGLViewer> GLContext::FindViewer(IGLViewer* aViewer) noexcept {
  GLPOSITION position{};
  GLPtr<IUnknown> member;
  for (m_Scene.m_pViewers->GetFirst(&position, member.Put()); member;
       m_Scene.m_pViewers->GetNext(&position, member.Put())) {
    if (member.Get() == aViewer)
      return GLPtr<IGLViewer>::FromCounted(static_cast<IGLViewer*>(member.Detach()));
  }
  return nullptr;
}

HRESULT GLContext::Select(IGLViewer* aViewer, GLDATA_POINT* aPoint1, GLDATA_POINT* aPoint2,
                          LONG aSelectClosest, LONG aSelectEnclosed, int* aArraySize,
                          ULONG* aIDArray) noexcept {
  if (aViewer == nullptr || aPoint1 == nullptr || aPoint2 == nullptr || aArraySize == nullptr ||
      aIDArray == nullptr) {
    return E_INVALIDARG;
  }
  if (*aArraySize < 1) return S_OK;
  const LogContext log(m_uNumber);
  HRESULT result = E_GL_BADSTATE;
  if (IsUsable() && !IsDrawThread()) {
    const GLPtr<IGLViewer> viewer = FindViewer(aViewer);
    if (!viewer) {
      result = E_INVALIDARG;
    } else if (const DrawThreadWait wait(*this); wait.IsAllowed()) {
      const std::scoped_lock oneAtATime(m_SelectLock);
      try {
        const auto outcome = std::make_shared<PSelectOutcome>();
        auto event = std::make_unique<PSelectEvent>(*this, *viewer, aPoint1, aPoint2, aSelectClosest != 0,
                                                    aSelectEnclosed != 0, aArraySize, aIDArray, outcome);
        result = WaitForSelection(event.release(), *outcome);
      } catch (const std::bad_alloc&) {
        result = E_OUTOFMEMORY;
      }
    }
  }
  if (FAILED(result)) *aArraySize = 0;
  if (result == E_GL_BADSTATE) LogDebug("Select is refused: no draw thread can serve it here");
  return result;
}

// Gives up where nobody can serve the selection: no thread, a parked one, one that has been replaced.
HRESULT GLContext::WaitForSelection(PSelectEvent* aEvent, PSelectOutcome& aOutcome) noexcept {
  const auto thread = DrawThread();
  if (thread == nullptr || m_bTearDown) {
    delete aEvent;
    return E_GL_BADSTATE;
  }
  thread->PostEvent(aEvent);
  while (!aOutcome.Wait() && !thread->IsParkedNow() && !thread->IsStopped()) {
  }
  // The event is gone before the caller's memory may go; the context's other queued tasks go with it.
  thread->RemoveEvents(this);
  return aOutcome.Result();
}
