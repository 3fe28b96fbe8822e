// Module threads: the list of jobs and their threads. Any thread.

#include "component/ModuleThreads.h"

#include <list>
#include <mutex>
#include <thread>

#include "component/Module.h"
#include "platform/ProcessWide.h"
#include "platform/Thread.h"

namespace {

struct Job {
  std::thread m_Thread;
  std::atomic<bool> m_bEnded{false};
};

/// Jobs that are running or not joined yet.
class Jobs {
 public:
  void Run(std::function<void()> aJob) {
    const std::scoped_lock lock(m_Lock);
    JoinEnded();
    Job& job = m_Jobs.emplace_back();
    try {
      job.m_Thread = StartThread([&job, run = std::move(aJob)] {
        const ModuleLock module;  // released last, so that every job has ended when the count is 0
        run();
        job.m_bEnded = true;
      });
    } catch (...) {
      m_Jobs.pop_back();
      throw;
    }
  }

  void Join() noexcept {
    const std::scoped_lock lock(m_Lock);
    JoinEnded();
  }

 private:
  void JoinEnded() noexcept {
    m_Jobs.remove_if([](Job& aJob) {
      if (!aJob.m_bEnded) return false;
      aJob.m_Thread.join();
      return true;
    });
  }

  std::mutex m_Lock;
  std::list<Job> m_Jobs;
};

constinit ProcessWide<Jobs> g_Jobs;

}  // namespace

void RunOnModuleThread(std::function<void()> aJob) noexcept {
  try {
    g_Jobs.Get().Run(std::move(aJob));
  } catch (...) {
    // Without a thread, the object of the job is never ended.
  }
}

void JoinEndedModuleThreads() noexcept { g_Jobs.Get().Join(); }
