// StartThread: creates all threads of the component. Any thread.

#pragma once

#include <thread>
#include <utility>

#ifdef _WIN32

/// Does nothing: Windows has no signals that interrupt a thread.
class SignalsBlocked {
 public:
  SignalsBlocked() noexcept {}
};
inline void NoteComponentThread() noexcept {}

#else

#include <csignal>

/// Blocks the calling thread's signals for the lifetime of the object. Signals that report a fault of the
/// thread stay unblocked: the host's crash handler must receive a fault in a painter.
class SignalsBlocked {
 public:
  SignalsBlocked() noexcept;
  ~SignalsBlocked();
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;

 private:
  sigset_t m_Before{};
};
/// Marks the calling thread as the component's own. Its signals are always blocked.
void NoteComponentThread() noexcept;
/// Returns whether the calling thread is marked as the component's own.
bool IsComponentThread() noexcept;

#endif

/// Starts a thread of the component. Its signals are blocked, also on threads that a driver starts from it:
/// only threads of the host handle the host's signals. Throws as std::thread does.
template <class Function>
std::thread StartThread(Function aFunction) {
  const SignalsBlocked blocked;
  return std::thread([run = std::move(aFunction)]() mutable {
    NoteComponentThread();
    run();
  });
}
