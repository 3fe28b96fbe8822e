// PCriticalSection: the recursive, fair lock of the whole component; PLock holds one for a scope.
// Any thread. Only the holder touches the entry count.

#pragma once

#include <atomic>
#include <mutex>
#include <thread>

#include "platform/ProcessIdentity.h"

/// A lock that its holder can enter again. Who waits gets in before the last holder enters again, in the
/// order of arrival: a thread that leaves and enters without a pause doesn't starve the others. In a forked
/// child only the thread that forked still holds what it held.
class PCriticalSection {
 public:
  PCriticalSection() noexcept = default;
  PCriticalSection(const PCriticalSection&) = delete;
  PCriticalSection& operator=(const PCriticalSection&) = delete;
  /// Waits for a holder on another thread. May run while the calling thread holds the lock.
  ~PCriticalSection();

  /// Waits until the calling thread holds the lock, and counts the entry.
  void Enter() noexcept;
  /// Enters only if no wait is needed. @return whether the calling thread holds the lock now
  bool TryEnter() noexcept;
  /// Takes one entry back; the last one hands the lock over. Throws E_FAIL as an HRESULT, and leaves nothing,
  /// when the calling thread hasn't entered: a fault of the caller.
  void Leave();
  /// Whether the calling thread holds the lock.
  bool IsHeldHere() const noexcept {
    return m_Holder.load(std::memory_order_relaxed) == std::this_thread::get_id();
  }

 private:
  struct Waiter;
  void Renew() noexcept;

  std::mutex m_Gate;                               // guards the queue and every change of holder
  std::atomic<std::thread::id> m_Holder{};         // a thread finds its own id here only if it holds the lock
  int m_iEntries = 0;                              // Enter calls not yet matched by Leave
  Waiter *m_pFirst = nullptr, *m_pLast = nullptr;  // who waits, in the order of arrival
  std::atomic<unsigned> m_uProcess{ProcessGeneration()};
};

/// Holds a lock for the length of a scope.
class PLock {
 public:
  explicit PLock(PCriticalSection& aSection) noexcept : m_Section(aSection) { m_Section.Enter(); }
  ~PLock() { m_Section.Leave(); }
  PLock(const PLock&) = delete;
  PLock& operator=(const PLock&) = delete;

 private:
  PCriticalSection& m_Section;
};
