// Threads that tear a context down whose last reference went on its own draw thread.

#include "context/TeardownThread.h"

#include <list>
#include <mutex>
#include <thread>

#include "component/Module.h"

namespace {

struct Job {
  std::thread m_Thread;
  std::atomic<bool> m_bEnded{false};
};

/// The jobs that run; those that have ended are joined at the next one, the rest at the module's end.
class Jobs {
 public:
  ~Jobs() {
    for (Job& job : m_Jobs) job.m_Thread.join();
  }

  void Run(std::function<void()> aJob) {
    const std::scoped_lock lock(m_Lock);
    m_Jobs.remove_if([](Job& job) {
      if (!job.m_bEnded) return false;
      job.m_Thread.join();
      return true;
    });
    Job& job = m_Jobs.emplace_back();
    try {
      job.m_Thread = std::thread([&job, run = std::move(aJob)] {
        const ModuleLock module;
        run();
        job.m_bEnded = true;
      });
    } catch (...) {
      m_Jobs.pop_back();
      throw;
    }
  }

 private:
  std::mutex m_Lock;
  std::list<Job> m_Jobs;
};

Jobs g_Jobs;

}  // namespace

void RunOnTeardownThread(std::function<void()> aJob) noexcept {
  try {
    g_Jobs.Run(std::move(aJob));
  } catch (...) {
    // No thread to be had: the context can't end on its own draw thread, so it stays.
  }
}
