// FifoMutex: hand-over of the lock.

#include "platform/FifoMutex.h"

#include <condition_variable>
#include <utility>

/// A waiting thread. The object is on that thread's stack.
struct FifoMutex::Waiter {
  std::condition_variable m_Turn;
  bool m_bHolds = false;
  Waiter* m_pNext = nullptr;
};

bool FifoMutex::Take() noexcept { return !std::exchange(m_bHeld, true); }

void FifoMutex::Append(Waiter& aWaiter) noexcept {
  Waiter** end = &m_pFirst;
  while (*end != nullptr) end = &(*end)->m_pNext;
  *end = &aWaiter;
}

void FifoMutex::Lock() noexcept {
  std::unique_lock gate(m_Gate);
  if (Take()) return;
  Waiter here;
  Append(here);
  here.m_Turn.wait(gate, [&] { return here.m_bHolds; });
}

bool FifoMutex::TryLock() noexcept {
  const std::scoped_lock gate(m_Gate);
  return Take();
}

bool FifoMutex::TryLockFor(std::chrono::milliseconds aLongest) noexcept {
  std::unique_lock gate(m_Gate);
  if (Take()) return true;
  Waiter here;
  Append(here);
  if (here.m_Turn.wait_for(gate, aLongest, [&] { return here.m_bHolds; })) return true;
  Waiter** link = &m_pFirst;
  while (*link != &here) link = &(*link)->m_pNext;
  *link = here.m_pNext;
  return false;
}

void FifoMutex::Unlock() noexcept {
  const std::scoped_lock gate(m_Gate);
  Waiter* const next = m_pFirst;
  m_bHeld = next != nullptr;
  if (next == nullptr) return;
  m_pFirst = next->m_pNext;
  next->m_bHolds = true;
  next->m_Turn.notify_one();  // under m_Gate: the waiter's stack stays valid until the gate is unlocked
}
