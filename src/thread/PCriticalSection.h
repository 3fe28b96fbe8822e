// PCriticalSection: the recursive, fair lock of the whole component. PLock holds one for a scope.
// Any thread. Only the holder accesses the entry count.

#pragma once

#include <atomic>
#include <thread>
#include <utility>

#include "platform/FifoMutex.h"
#include "platform/ProcessIdentity.h"

/// A recursive lock. Waiting threads enter in FIFO order, and before the last holder can enter again. So a
/// thread that leaves and enters in a loop does not starve others. In a forked child, the thread that called
/// fork still holds the locks that it held.
class PCriticalSection {
 public:
  PCriticalSection() noexcept = default;
  PCriticalSection(const PCriticalSection&) = delete;
  PCriticalSection& operator=(const PCriticalSection&) = delete;
  /// Waits for a holder on another thread. The calling thread may hold the lock.
  ~PCriticalSection();

  /// Waits until the calling thread holds the lock, and counts the entry.
  void Enter() noexcept;
  /// Enters only if this needs no wait.
  /// @return whether the calling thread holds the lock now
  bool TryEnter() noexcept;
  /// Takes back one entry. The last one hands the lock to the next waiting thread. If the calling thread has
  /// not entered, which is an error of the caller, throws E_FAIL as an HRESULT and changes nothing.
  void Leave();
  /// Returns whether the calling thread holds the lock.
  bool IsHeldHere() const noexcept {
    return m_Holder.load(std::memory_order_relaxed) == std::this_thread::get_id();
  }

 private:
  void Renew() noexcept;
  void NoteEntered() noexcept;

  FifoMutex m_Mutex;
  std::atomic<std::thread::id> m_Holder{};  // a thread reads its own id here only if it holds the lock
  int m_iEntries = 0;                       // Enter calls without a matching Leave
  std::atomic<unsigned> m_uProcess{ProcessGeneration()};
};

/// Holds a lock for the length of a scope, or until Release.
class PLock {
 public:
  explicit PLock(PCriticalSection& aSection) noexcept : PLock(&aSection) {}
  /// With null it holds nothing.
  explicit PLock(PCriticalSection* aSection) noexcept : m_pSection(aSection) {
    if (m_pSection != nullptr) m_pSection->Enter();
  }
  ~PLock() { Release(); }
  PLock(const PLock&) = delete;
  PLock& operator=(const PLock&) = delete;

  void Release() noexcept {
    if (PCriticalSection* held = std::exchange(m_pSection, nullptr)) held->Leave();
  }

 private:
  PCriticalSection* m_pSection;
};
