// PipeSignal: prevents SIGPIPE from ending the host after a write to a closed connection. Any thread.

#pragma once

#include <csignal>

/// For the lifetime of the object, a write to a closed connection on this thread returns an error and raises
/// no signal. A SIGPIPE that was already pending stays pending. Does nothing on threads of the component,
/// which block all signals.
class PipeSignal {
 public:
  PipeSignal() noexcept;
  ~PipeSignal();
  PipeSignal(const PipeSignal&) = delete;
  PipeSignal& operator=(const PipeSignal&) = delete;

 private:
  bool m_bHandles;  // false: nothing to undo
  sigset_t m_Before{};
};
