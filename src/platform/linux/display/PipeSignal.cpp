// PipeSignal: blocks and removes SIGPIPE. The kernel sends it to the thread that writes.

#include "platform/linux/display/PipeSignal.h"

#include <cerrno>
#include <ctime>

#include "platform/Thread.h"

namespace {

bool IsPending() noexcept {
  sigset_t pending;
  return sigpending(&pending) == 0 && sigismember(&pending, SIGPIPE) == 1;
}

sigset_t PipeSet() noexcept {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGPIPE);
  return set;
}

}  // namespace

PipeSignal::PipeSignal() noexcept : m_bHandles(!IsComponentThread() && !IsPending()) {
  if (!m_bHandles) return;  // a pending signal is also blocked
  const sigset_t set = PipeSet();
  pthread_sigmask(SIG_BLOCK, &set, &m_Before);
}

PipeSignal::~PipeSignal() {
  if (!m_bHandles) return;
  const int error = errno;
  const sigset_t set = PipeSet();
  constexpr timespec kNow{};
  if (IsPending()) sigtimedwait(&set, nullptr, &kNow);
  pthread_sigmask(SIG_SETMASK, &m_Before, nullptr);
  errno = error;
}
