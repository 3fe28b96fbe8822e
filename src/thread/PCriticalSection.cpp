// PCriticalSection: the lock is handed from the thread that leaves to the one that has waited longest, so
// that it is never free while somebody waits. Any thread.

#include "thread/PCriticalSection.h"

#include <gllib/GLPlatform.h>

#include <condition_variable>

/// A thread that waits; lives on that thread's stack.
struct PCriticalSection::Waiter {
  const std::thread::id m_Id = std::this_thread::get_id();
  std::condition_variable m_Turn;
  bool m_bHolds = false;
  Waiter* m_pNext = nullptr;
};

PCriticalSection::~PCriticalSection() { Enter(); }

void PCriticalSection::Enter() noexcept {
  if (IsHeldHere()) {
    ++m_iEntries;
    return;
  }
  std::unique_lock gate(m_Gate);
  if (m_Holder.load(std::memory_order_relaxed) == std::thread::id()) {
    m_Holder.store(std::this_thread::get_id(), std::memory_order_relaxed);
  } else {
    Waiter here;
    (m_pLast != nullptr ? m_pLast->m_pNext : m_pFirst) = &here;
    m_pLast = &here;
    here.m_Turn.wait(gate, [&] { return here.m_bHolds; });
  }
  m_iEntries = 1;
}

bool PCriticalSection::TryEnter() noexcept {
  if (!IsHeldHere()) {
    const std::lock_guard gate(m_Gate);
    if (m_Holder.load(std::memory_order_relaxed) != std::thread::id()) return false;
    m_Holder.store(std::this_thread::get_id(), std::memory_order_relaxed);
    m_iEntries = 0;
  }
  ++m_iEntries;
  return true;
}

void PCriticalSection::Leave() {
  if (!IsHeldHere()) throw E_FAIL;
  if (--m_iEntries > 0) return;
  const std::lock_guard gate(m_Gate);
  Waiter* next = m_pFirst;
  m_Holder.store(next != nullptr ? next->m_Id : std::thread::id(), std::memory_order_relaxed);
  if (next == nullptr) return;
  m_pFirst = next->m_pNext;
  if (m_pFirst == nullptr) m_pLast = nullptr;
  next->m_bHolds = true;
  next->m_Turn.notify_one();  // still behind the gate: the waiter's stack stands until it opens
}
