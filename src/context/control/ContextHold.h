// ContextHold: takes the context's lock for operations of the interfaces. Any thread.

#pragma once

#include <optional>

#include "context/GLContext.h"
#include "context/control/DrawThreadWait.h"
#include "thread/PCriticalSection.h"

/// Holds a context's lock during a scope. Not held in a forked child for a context of the parent. Also not
/// held if the calling thread is a draw thread whose wait would deadlock with other draw threads. During a
/// wait, other contexts can use the calling draw thread's rendering turn until the lock is left.
class ContextHold {
 public:
  ContextHold(GLContext& aContext, PCriticalSection& aLock) noexcept
      : m_Lock(aLock), m_bHeld(!aContext.IsInherited() && aLock.TryEnter()) {
    if (m_bHeld || aContext.IsInherited()) return;
    m_Wait.emplace(aContext);
    if (!m_Wait->IsAllowed()) return;
    m_Lock.Enter();
    m_bHeld = true;
  }
  ~ContextHold() {
    if (m_bHeld) m_Lock.Leave();
  }
  ContextHold(const ContextHold&) = delete;
  ContextHold& operator=(const ContextHold&) = delete;

  explicit operator bool() const noexcept { return m_bHeld; }

 private:
  std::optional<DrawThreadWait> m_Wait;  // destroyed after the lock is left
  PCriticalSection& m_Lock;
  bool m_bHeld;
};
