// PipeSignal: keeps a write to an X server that has gone from ending the host by SIGPIPE. Any thread.

#pragma once

#include <csignal>

/// For the object's length, a write to a closed connection on this thread gives an error and no signal. A
/// SIGPIPE that was pending before stays pending. Costs nothing on a thread of the component, which blocks
/// all signals.
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
