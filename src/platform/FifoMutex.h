// FifoMutex: the queue of waiting threads behind PCriticalSection and RenderingTurn. Any thread.

#pragma once

#include <chrono>
#include <mutex>

/// A lock that waiting threads get in FIFO order. The holder passes it directly to the thread that has waited
/// longest, so it is never free while a thread waits.
class FifoMutex {
 public:
  explicit FifoMutex(bool aHeld = false) noexcept : m_bHeld(aHeld) {}
  FifoMutex(const FifoMutex&) = delete;
  FifoMutex& operator=(const FifoMutex&) = delete;

  void Lock() noexcept;
  /// @return false if the lock is held
  bool TryLock() noexcept;
  /// @return false if aLongest has passed
  bool TryLockFor(std::chrono::milliseconds aLongest) noexcept;
  void Unlock() noexcept;

 private:
  struct Waiter;
  bool Take() noexcept;
  void Append(Waiter& aWaiter) noexcept;

  std::mutex m_Gate;  // guards the members below
  bool m_bHeld;
  Waiter* m_pFirst = nullptr;  // waiting threads, in the order of arrival
};
