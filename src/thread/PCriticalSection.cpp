// PCriticalSection: hand-over of the lock. Leave passes the lock directly to the thread that has waited
// longest, so the lock is never free while a thread waits. Any thread.

#include "thread/PCriticalSection.h"

#include <gllib/GLPlatform.h>

#include <condition_variable>
#include <new>

/// A waiting thread. The object is on that thread's stack.
struct PCriticalSection::Waiter {
  const std::thread::id m_Id = std::this_thread::get_id();
  std::condition_variable m_Turn;
  bool m_bHolds = false;
  Waiter* m_pNext = nullptr;
};

PCriticalSection::~PCriticalSection() {
  Enter();
  m_iEntries = 1;
  Leave();  // while a process exits, a thread may enter a destroyed lock
}

// In a forked child the parent's threads do not exist, so none of them holds the lock or waits for it. The
// first thread of the child that uses the lock resets it.
void PCriticalSection::Renew() noexcept {
  while (g_bMakingProcessObject.exchange(true)) std::this_thread::yield();
  if (m_uProcess != ProcessGeneration()) {
    ::new (static_cast<void*>(&m_Gate)) std::mutex;
    m_pFirst = m_pLast = nullptr;
    if (!IsHeldHere()) m_Holder = std::thread::id();
    m_uProcess = ProcessGeneration();
  }
  g_bMakingProcessObject = false;
}

void PCriticalSection::Enter() noexcept {
  if (IsHeldHere()) {
    ++m_iEntries;
    return;
  }
  if (m_uProcess.load(std::memory_order_relaxed) != ProcessGeneration()) Renew();
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
    if (m_uProcess.load(std::memory_order_relaxed) != ProcessGeneration()) Renew();
    const std::lock_guard gate(m_Gate);
    if (m_Holder.load(std::memory_order_relaxed) != std::thread::id()) return false;
    m_Holder.store(std::this_thread::get_id(), std::memory_order_relaxed);
    m_iEntries = 0;
  }
  ++m_iEntries;
  return true;
}

void PCriticalSection::Leave() {
  if (!IsHeldHere()) throw HRESULT{E_FAIL};
  if (--m_iEntries > 0) return;
  if (m_uProcess.load(std::memory_order_relaxed) != ProcessGeneration()) Renew();
  const std::lock_guard gate(m_Gate);
  Waiter* next = m_pFirst;
  m_Holder.store(next != nullptr ? next->m_Id : std::thread::id(), std::memory_order_relaxed);
  if (next == nullptr) return;
  m_pFirst = next->m_pNext;
  if (m_pFirst == nullptr) m_pLast = nullptr;
  next->m_bHolds = true;
  next->m_Turn.notify_one();  // under m_Gate: the waiter's stack stays valid until the gate is unlocked
}
