// PCriticalSection: recursion, and the behaviour in a forked child. Any thread.

#include "thread/PCriticalSection.h"

#include <gllib/GLPlatform.h>

#include <new>

PCriticalSection::~PCriticalSection() {
  Enter();
  m_iEntries = 1;
  Leave();  // while a process exits, a thread may enter a destroyed lock
}

// In a forked child the parent's threads do not exist, so none of them holds the lock or waits for it. The
// first thread of the child that uses the lock resets it.
void PCriticalSection::Renew() noexcept {
  if (m_uProcess.load(std::memory_order_relaxed) == ProcessGeneration()) return;
  while (g_bMakingProcessObject.exchange(true)) std::this_thread::yield();
  if (m_uProcess != ProcessGeneration()) {
    ::new (static_cast<void*>(&m_Mutex)) FifoMutex(IsHeldHere());
    if (!IsHeldHere()) m_Holder = std::thread::id();
    m_uProcess = ProcessGeneration();
  }
  g_bMakingProcessObject = false;
}

void PCriticalSection::Enter() noexcept {
  if (!IsHeldHere()) {
    Renew();
    m_Mutex.Lock();
    NoteEntered();
  }
  ++m_iEntries;
}

bool PCriticalSection::TryEnter() noexcept {
  if (!IsHeldHere()) {
    Renew();
    if (!m_Mutex.TryLock()) return false;
    NoteEntered();
  }
  ++m_iEntries;
  return true;
}

void PCriticalSection::NoteEntered() noexcept {
  m_Holder.store(std::this_thread::get_id(), std::memory_order_relaxed);
  m_iEntries = 0;
}

void PCriticalSection::Leave() {
  if (!IsHeldHere()) throw HRESULT{E_FAIL};
  if (--m_iEntries > 0) return;
  Renew();
  m_Holder.store(std::thread::id(), std::memory_order_relaxed);
  m_Mutex.Unlock();
}
