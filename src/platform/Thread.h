// StartThread: the one way in which the component makes a thread. Any thread.

#pragma once

#include <thread>
#include <utility>

#ifdef _WIN32

/// Nothing here interrupts a thread.
class SignalsBlocked {
 public:
  SignalsBlocked() noexcept {}
};
inline void NoteComponentThread() noexcept {}

#else

#include <csignal>

/// Blocks the calling thread's signals for the object's length, except those that report a fault of the
/// thread itself: the host's handler for a crash must see one in a painter.
class SignalsBlocked {
 public:
  SignalsBlocked() noexcept;
  ~SignalsBlocked();
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;

 private:
  sigset_t m_Before{};
};
/// Notes that the calling thread is the component's own, so that its blocked signals need no care.
void NoteComponentThread() noexcept;
/// Whether the calling thread is the component's own.
bool IsComponentThread() noexcept;

#endif

/// Starts a thread of the component. All signals are blocked there, and on threads that a driver starts from
/// there: the host's signals are the host's threads' alone. Throws as std::thread does.
template <class Function>
std::thread StartThread(Function aFunction) {
  const SignalsBlocked blocked;
  return std::thread([run = std::move(aFunction)]() mutable {
    NoteComponentThread();
    run();
  });
}
