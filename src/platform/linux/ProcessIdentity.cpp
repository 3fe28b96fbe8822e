// ProcessIdentity on Linux: counts the forks between this process and the one that loaded the module. The
// handler runs in the child, on its only thread. The C library takes it out when the module is unloaded.

#include "platform/ProcessIdentity.h"

#include <pthread.h>

constinit std::atomic<unsigned> g_uProcessGeneration{1};

namespace {

void CountFork() noexcept {
  g_bMakingProcessObject = false;  // its holder may be a thread that does not exist here
  ++g_uProcessGeneration;
}

struct ForkHandler {
  ForkHandler() noexcept { pthread_atfork(nullptr, nullptr, CountFork); }
} g_ForkHandler;

}  // namespace
