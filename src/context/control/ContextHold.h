// ContextHold: the context's lock, as the operations of the interfaces take it. Any thread.

#pragma once

#include <optional>

#include "context/GLContext.h"
#include "context/control/DrawThreadWait.h"
#include "thread/PCriticalSection.h"

/// Holds a context's lock for the length of a scope. Refused in a forked child, for a context of the parent.
/// A painter of another context is refused if its wait for the lock would close a circle of draw threads; its
/// rendering turn is free for others until the lock is left.
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
  std::optional<DrawThreadWait> m_Wait;  // ends after the lock was left
  PCriticalSection& m_Lock;
  bool m_bHeld;
};
