// DrawThreadWait: finds circles of draw threads that wait for each other. Any thread.

#include "context/control/DrawThreadWait.h"

#include <mutex>
#include <utility>

#include "context/GLContext.h"
#include "platform/Log.h"
#include "platform/ProcessWide.h"

namespace {

constinit ProcessWide<std::mutex> g_WaitsLock;  // guards m_pAwaited of all contexts

}  // namespace

DrawThreadWait::DrawThreadWait(GLContext& aAwaited) noexcept
    : m_pWaiting(GLContext::DrawnHere() != &aAwaited ? GLContext::DrawnHere() : nullptr) {
  if (m_pWaiting == nullptr) return;
  const std::scoped_lock lock(g_WaitsLock.Get());
  for (const GLContext* next = &aAwaited; next != nullptr; next = next->m_pAwaited) {
    if (next == m_pWaiting) m_bClosesCircle = true;
  }
  if (m_bClosesCircle) {
    LogWarning("a wait for context %u is refused: its draw thread waits for this one", aAwaited.Number());
    return;
  }
  m_pBefore = std::exchange(m_pWaiting->m_pAwaited, &aAwaited);
}

DrawThreadWait::~DrawThreadWait() {
  if (m_pWaiting == nullptr || m_bClosesCircle) return;
  const std::scoped_lock lock(g_WaitsLock.Get());
  m_pWaiting->m_pAwaited = m_pBefore;
}
