// The worker thread: its pauses, controlled mode, parking, stopping. A scripted clock where time matters.

#include "thread/PThread.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <vector>

using namespace std::chrono_literals;

namespace {

constexpr DWORD kLong = 3'600'000;  // a test that waits this out has failed

/// Waits until a condition holds; false after ten seconds.
template <class Condition>
bool Eventually(Condition aHolds) {
  for (int i = 0; i < 10'000; ++i) {
    if (aHolds()) return true;
    std::this_thread::sleep_for(1ms);
  }
  return false;
}

/// A thread that counts its cycles.
struct Worker {
  explicit Worker(PClock& aClock = PClock::System()) : m_Thread(&Cycle, this, &End, aClock) {}
  ~Worker() { m_Thread.Stop(); }
  static void Cycle(void* aWorker) {
    auto& self = *static_cast<Worker*>(aWorker);
    if (self.m_pfnWork) self.m_pfnWork();
    ++self.m_iCycles;
  }
  static void End(void* aWorker) {
    auto& self = *static_cast<Worker*>(aWorker);
    self.m_bEndedOnWorker = self.m_Thread.IsWorker() && !self.m_Thread.IsStopped();
  }
  bool WaitForCycles(int aCount) {
    return Eventually([&] { return m_iCycles >= aCount; });
  }
  /// Waits long enough for a cycle that shouldn't come.
  bool Cycles() {
    const int before = m_iCycles;
    std::this_thread::sleep_for(40ms);
    return m_iCycles != before;
  }

  std::atomic<int> m_iCycles{0};
  std::atomic<bool> m_bEndedOnWorker{false};
  std::function<void()> m_pfnWork;
  PThread m_Thread;
};

/// A clock on which work takes what the test says; a wait passes at once and is written down.
class ScriptedClock final : public PClock {
 public:
  explicit ScriptedClock(std::uint64_t aNow) : m_uNow(aNow) {}
  std::uint64_t Now() noexcept override { return m_uNow; }
  void Wait(std::unique_lock<std::mutex>& aHold, std::condition_variable& aWake, DWORD aMilliseconds,
            const std::function<bool()>& aEnd) override {
    m_uNow += aMilliseconds;
    m_Waits.push_back(aMilliseconds);
    if (m_Waits.size() == m_uLast) aWake.wait(aHold, aEnd);
  }

  std::uint64_t m_uNow;
  std::vector<DWORD> m_Waits;
  std::size_t m_uLast = 4;  // this wait lasts until something ends it
};

}  // namespace

TEST(ThreadPause, IsTheRestOfThePreferredCycleButNeverBelowTheMustSleep) {
  struct Case {
    DWORD m_dwStart, m_dwEnd, m_dwPreferred, m_dwMustSleep, m_dwSleep, m_dwLast;
  };
  constexpr DWORD kMax = 0xFFFFFFFF;
  for (const auto& [start, end, preferred, must, sleep, last] : std::initializer_list<Case>{
           {100, 105, 40, 10, 35, 40},
           {100, 129, 40, 10, 11, 40},
           {100, 131, 40, 10, 10, 41},
           {100, 140, 40, 10, 10, 50},
           {100, 160, 40, 10, 10, 70},
           {100, 100, 10, 40, 40, 40},
           {kMax - 4, 5, 40, 10, 30, 40},  // the tick count wraps
           {100, 100, 0, 0, 0, 0},
           {100, 99, 40, 10, 10, 9},  // an active time of all but 2^32 ms; the sum wraps
       }) {
    const PPause pause = PPause::After(start, end, preferred, must);
    EXPECT_EQ(pause.m_dwSleep, sleep) << start << " to " << end;
    EXPECT_EQ(pause.m_dwLastCycle, last) << start << " to " << end;
  }
}

TEST(Thread, SleepsByItsClockAndParameters) {
  ScriptedClock clock(0xFFFFFFF0);  // the low half wraps on the way
  Worker worker(clock);
  const DWORD work[] = {5, 35, 60, 0};
  int cycle = 0;
  worker.m_pfnWork = [&] { clock.m_uNow += work[cycle++]; };
  ASSERT_TRUE(worker.m_Thread.Start(40, 10, 0, false));
  EXPECT_TRUE(worker.WaitForCycles(4));
  worker.m_Thread.Stop();
  EXPECT_EQ(clock.m_Waits, (std::vector<DWORD>{35, 10, 10, 40}));
  EXPECT_EQ(worker.m_Thread.m_dwLastCycle, 40u);
}

TEST(Thread, ControlledItCyclesOncePerTriggerOrAfterTheMaximumWait) {
  Worker worker;
  worker.m_Thread.Trigger();
  worker.m_Thread.SetControlled(true, kLong);
  ASSERT_TRUE(worker.m_Thread.Start(kLong, kLong, 0, false));
  ASSERT_TRUE(worker.WaitForCycles(1)) << "the first one comes by itself";
  EXPECT_FALSE(worker.Cycles()) << "a trigger before controlled mode is none";
  worker.m_Thread.Trigger();
  ASSERT_TRUE(worker.WaitForCycles(2));
  EXPECT_FALSE(worker.Cycles());

  // Triggers during a cycle make one further cycle.
  worker.m_pfnWork = [&] {
    if (worker.m_iCycles != 2) return;
    for (int i = 0; i < 3; ++i) worker.m_Thread.Trigger();
  };
  worker.m_Thread.Trigger();
  ASSERT_TRUE(worker.WaitForCycles(4));
  EXPECT_FALSE(worker.Cycles());

  worker.m_Thread.SetControlled(true, 0);
  worker.m_Thread.Trigger();
  EXPECT_TRUE(worker.WaitForCycles(50)) << "no wait at all";
}

TEST(Thread, ATriggerEndsNoSleepOfAFreeRunningThread) {
  Worker worker;
  worker.m_Thread.SetControlled(false, 0);
  ASSERT_TRUE(worker.m_Thread.Start(kLong, kLong, 0, false));
  ASSERT_TRUE(worker.WaitForCycles(1));
  worker.m_Thread.Trigger();
  EXPECT_FALSE(worker.Cycles());
  worker.m_Thread.SetControlled(true, kLong);
  worker.m_Thread.Trigger();
  EXPECT_FALSE(worker.Cycles()) << "nor in controlled mode that began during the sleep";
}

TEST(Thread, AStopReachesItWhateverItWaitsFor) {
  struct Case {
    const char* m_szName;
    void (*m_pfnPrepare)(Worker&);
    bool m_bHeldBack;
  };
  const Case cases[] = {
      {"a wait without a limit", [](Worker& w) { w.m_Thread.SetControlled(true, PClock::kForever); }, false},
      {"a long sleep", [](Worker&) {}, false},
      {"a park", [](Worker& w) { w.m_Thread.RequestSuspend(); }, false},
      {"a start that was held back", [](Worker&) {}, true},
  };
  for (const auto& [name, prepare, heldBack] : cases) {
    Worker worker;
    prepare(worker);
    ASSERT_TRUE(worker.m_Thread.Start(kLong, 0, 0, heldBack));
    std::this_thread::sleep_for(20ms);
    const auto begin = std::chrono::steady_clock::now();
    std::thread second([&] { worker.m_Thread.Stop(); });
    worker.m_Thread.Stop();
    second.join();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s) << name;
    EXPECT_TRUE(worker.m_Thread.IsStopped()) << name;
    EXPECT_TRUE(worker.m_bEndedOnWorker) << name << ": the last act is the worker's own";
    EXPECT_EQ(worker.m_iCycles != 0, name == cases[0].m_szName || name == cases[1].m_szName) << name;

    // What comes after the end returns at once.
    worker.m_Thread.RequestSuspend();
    worker.m_Thread.Resume();
    worker.m_Thread.Trigger();
    EXPECT_EQ(worker.m_Thread.SetPriority(1), 0) << name;
    EXPECT_FALSE(worker.m_Thread.IsParked()) << name;
    EXPECT_FALSE(worker.m_Thread.Start(1, 1, 0, false)) << name;
  }
}

TEST(Thread, HeldBackItRunsFromTheResumeOn) {
  Worker worker;
  ASSERT_TRUE(worker.m_Thread.Start(1, 1, 0, true));
  EXPECT_FALSE(worker.Cycles());
  EXPECT_FALSE(worker.m_Thread.IsParked());
  worker.m_Thread.Resume();
  EXPECT_TRUE(worker.WaitForCycles(2));
  EXPECT_FALSE(worker.m_Thread.Start(1, 1, 0, false)) << "once only";
}

TEST(Thread, ParksUntilOneResumeAndRunsOnAfterOneTooMany) {
  Worker worker;
  ASSERT_TRUE(worker.m_Thread.Start(1, 1, 0, false));
  worker.m_Thread.RequestSuspend();
  worker.m_Thread.RequestSuspend();
  ASSERT_TRUE(Eventually([&] { return worker.m_Thread.IsParked(); }));
  EXPECT_TRUE(worker.m_Thread.IsParkedNow());
  EXPECT_FALSE(worker.Cycles());
  worker.m_Thread.Resume();
  EXPECT_FALSE(worker.m_Thread.IsParked());
  EXPECT_TRUE(worker.WaitForCycles(worker.m_iCycles + 2)) << "suspensions aren't counted";
  worker.m_Thread.Resume();
  EXPECT_TRUE(worker.WaitForCycles(worker.m_iCycles + 2));
}

TEST(Thread, NoResumeIsLostHoweverItFallsAroundThePark) {
  Worker worker;
  ASSERT_TRUE(worker.m_Thread.Start(0, 0, 0, false));
  for (int i = 0; i < 300; ++i) {
    worker.m_Thread.RequestSuspend();
    if (i % 3 == 0) {
      ASSERT_TRUE(Eventually([&] { return worker.m_Thread.IsParkedNow(); })) << i;
    }
    const int before = worker.m_iCycles;
    worker.m_Thread.Resume();
    ASSERT_TRUE(worker.WaitForCycles(before + 1)) << i;
  }
}

TEST(Thread, AWorkerThatNeverPausesLetsItsCallersIn) {
  Worker worker;
  worker.m_pfnWork = [] { std::this_thread::sleep_for(2ms); };
  worker.m_Thread.SetControlled(true, 0);
  ASSERT_TRUE(worker.m_Thread.Start(0, 0, 0, false));
  ASSERT_TRUE(worker.WaitForCycles(1));
  for (DWORD i = 1; i < 20; ++i) {
    std::this_thread::sleep_for(1ms);  // into the middle of a cycle
    const int before = worker.m_iCycles;
    EXPECT_EQ(worker.m_Thread.SetPreferredCycle(i), i - 1);
    EXPECT_LE(worker.m_iCycles - before, 3);
  }
}

TEST(Thread, ItsParametersChangeFromItsOwnCycle) {
  Worker worker;
  std::atomic<DWORD> old = 0;
  worker.m_pfnWork = [&] {
    old = worker.m_Thread.SetMustSleepCycle(2);
    worker.m_Thread.SetPriority(-2);
    worker.m_Thread.RequestSuspend();
    EXPECT_FALSE(worker.m_Thread.IsParked());
    EXPECT_TRUE(worker.m_Thread.IsWorker());
  };
  ASSERT_TRUE(worker.m_Thread.Start(1, 7, 2, false));
  ASSERT_TRUE(Eventually([&] { return worker.m_Thread.IsParkedNow(); }));
  EXPECT_EQ(old, 7u);
  EXPECT_EQ(worker.m_Thread.m_iPriority, -2);
  EXPECT_FALSE(worker.m_Thread.IsWorker());
}
