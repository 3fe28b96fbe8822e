// GLContext: selection, on the host's side. Any thread except the draw thread. While the caller waits for the
// draw thread, it holds only m_SelectLock.

#include <memory>
#include <mutex>
#include <new>

#include "context/GLContext.h"
#include "context/control/DrawThreadWait.h"
#include "platform/Log.h"

// Returns a counted pointer to a viewer of this context, because another thread may destroy the viewer at any
// time; null if it is not a viewer of this context.
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
      result = BeginSelection(
          {viewer.Get(), aPoint1, aPoint2, aSelectClosest != 0, aSelectEnclosed != 0, aArraySize, aIDArray});
      if (SUCCEEDED(result)) result = WaitForSelection();
    }
  }
  if (FAILED(result)) *aArraySize = 0;
  if (result == E_GL_BADSTATE) LogDebug("Select is refused: no draw thread can run it now");
  return result;
}

// Reuses the event of the previous selection, unless a replaced draw thread has not dropped it yet.
HRESULT GLContext::BeginSelection(const PSelectEvent::Request& aRequest) noexcept {
  if (m_pSelectEvent != nullptr && m_pSelectEvent->Begin(aRequest, m_pSelectEvent)) return S_OK;
  try {
    m_pSelectEvent = std::make_shared<PSelectEvent>(*this);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  m_pSelectEvent->Begin(aRequest, m_pSelectEvent);
  return S_OK;
}

// Returns E_GL_BADSTATE if no draw thread can run the selection: there is none, it is parked, or it was
// replaced.
HRESULT GLContext::WaitForSelection() noexcept {
  const auto thread = DrawThread();
  if (thread == nullptr || m_bTearDown) {
    m_pSelectEvent->Drop();
    return E_GL_BADSTATE;
  }
  thread->PostEvent(m_pSelectEvent.get());
  while (!m_pSelectEvent->Wait() && !thread->IsParkedNow() && !thread->IsStopped()) {
  }
  // Removes the event before the caller's memory becomes invalid. Also removes the context's other queued
  // tasks.
  thread->RemoveEvents(this);
  return m_pSelectEvent->Result();
}
