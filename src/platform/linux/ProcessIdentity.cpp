// ProcessIdentity on Linux: counts the forks since the module was loaded. The fork handlers run on the thread
// that forks; CountFork runs in the child. The C library removes them when the module is unloaded.

#include "platform/ProcessIdentity.h"

#include <pthread.h>

#include <mutex>

constinit std::atomic<unsigned> g_uProcessGeneration{1};

namespace {

constinit std::mutex g_ForkLock;  // held during a fork, and by code that must not be forked

void BeforeFork() noexcept { g_ForkLock.lock(); }

void AfterFork() noexcept { g_ForkLock.unlock(); }

void CountFork() noexcept {
  AfterFork();
  g_bMakingProcessObject = false;  // its holder may be a thread that does not exist here
  ++g_uProcessGeneration;
}

struct ForkHandler {
  ForkHandler() noexcept { pthread_atfork(BeforeFork, AfterFork, CountFork); }
} g_ForkHandler;

}  // namespace

ForkBlock::ForkBlock() noexcept { g_ForkLock.lock(); }

ForkBlock::~ForkBlock() { g_ForkLock.unlock(); }
