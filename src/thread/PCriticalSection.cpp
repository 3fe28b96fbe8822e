// PCriticalSection: the lock is handed from the thread that leaves to the one that has waited longest, so
// that it is never free while somebody waits. Any thread.

#include "thread/PCriticalSection.h"

#include <gllib/GLPlatform.h>

#include <condition_variable>
#include <new>

/// A thread that waits; lives on that thread's stack.
struct PCriticalSection::Waiter {
  const std::thread::id m_Id = std::this_thread::get_id();
  std::condition_variable m_Turn;
  bool m_bHolds = false;
  Waiter* m_pNext = nullptr;
};

PCriticalSection::~PCriticalSection() {
  Enter();
  m_iEntries = 1;
  Leave();  // for one who enters although the lock ends, as a thread may while a process exits
}

// In a forked child: threads of the parent neither hold nor wait here. Its first thread comes first.
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
  next->m_Turn.notify_one();  // still behind the gate: the waiter's stack stands until it opens
}
