// Signal masks of the component's threads. Any thread.

#include "platform/Thread.h"

namespace {

thread_local bool t_bComponentThread = false;

}  // namespace

SignalsBlocked::SignalsBlocked() noexcept {
  sigset_t blocked;
  sigfillset(&blocked);
  for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS}) sigdelset(&blocked, fault);
  pthread_sigmask(SIG_BLOCK, &blocked, &m_Before);
}

SignalsBlocked::~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_Before, nullptr); }

void NoteComponentThread() noexcept { t_bComponentThread = true; }

bool IsComponentThread() noexcept { return t_bComponentThread; }
