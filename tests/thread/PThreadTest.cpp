// PThread: pauses, controlled mode, parking and stopping. No display.

#include "thread/PThread.h"

#include <optional>

#include "support/Test.h"

using namespace std::chrono_literals;

namespace {

constexpr DWORD kMaximumWait = 3'600'000;  // a test that waits this long has failed

/// A thread that counts its cycles.
struct Worker {
  explicit Worker(PClock& aClock = PClock::System()) : m_Thread(&Cycle, this, &End, aClock) {}
  ~Worker() { m_Thread.Stop(); }
  static void Cycle(void* aWorker, unsigned aWake) {
    auto& self = *static_cast<Worker*>(aWorker);
    self.m_uWake = aWake;
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
  /// Waits long enough to detect an unexpected cycle.
  bool Cycles() {
    const int before = m_iCycles;
    std::this_thread::sleep_for(40ms);
    return m_iCycles != before;
  }

  std::atomic<int> m_iCycles{0};
  std::atomic<unsigned> m_uWake{0};  // reason of the last cycle
  std::atomic<bool> m_bEndedOnWorker{false};
  std::function<void()> m_pfnWork;
  PThread m_Thread;
};

/// A task that runs a function once.
struct Task final : PEvent {
  explicit Task(std::function<void()> aWork)
      : PEvent(nullptr, Lifetime::kOneRun), m_pfnWork(std::move(aWork)) {}
  void Run() override { m_pfnWork(); }
  const std::function<void()> m_pfnWork;
};

/// A clock for which the test sets the duration of work. It records each wait, and ends it at once. Only wait
/// number m_uLast lasts until its end condition is true.
struct ScriptedClock final : PClock {
  std::uint64_t Now() noexcept override { return m_uNow; }
  void Wait(std::unique_lock<std::mutex>& aHold, std::condition_variable& aWake, DWORD aMilliseconds,
            const std::function<bool()>& aEnd) override {
    if (aEnd()) return;
    m_Waits.push_back(aMilliseconds);
    if (m_Waits.size() == m_uLast) {
      aWake.wait(aHold, aEnd);
      return;
    }
    aHold.unlock();
    m_uNow += (m_Interrupt ? m_Interrupt(m_Waits.size()) : std::nullopt).value_or(aMilliseconds);
    aHold.lock();
  }
  std::size_t m_uLast = 4;
  /// Gets the number of a wait, and may end it. @return time until the end; nothing for a complete wait
  std::function<std::optional<DWORD>(std::size_t)> m_Interrupt;
  std::uint64_t m_uNow = 0xFFFFFFF0;  // its low 32 bits wrap during the test
  std::vector<DWORD> m_Waits;
};

}  // namespace

TEST(Thread, PausesForTheRestOfTheCycle) {
  const struct {
    DWORD start, end, preferred, must, sleep, last;
  } cases[] = {{100, 129, 40, 10, 11, 40}, {100, 131, 40, 10, 10, 41}, {100, 140, 40, 10, 10, 50},
               {100, 160, 40, 10, 10, 70}, {100, 100, 10, 40, 40, 40}, {0xFFFFFFFB, 5, 40, 10, 30, 40},
               {100, 100, 0, 0, 0, 0},     {100, 99, 40, 10, 10, 9}};
  for (const auto& [start, end, preferred, must, sleep, last] : cases) {
    EXPECT_EQ(PPause::After(start, end, preferred, must).m_dwSleep, sleep) << start << " to " << end;
    EXPECT_EQ(PPause::After(start, end, preferred, must).m_dwLastCycle, last) << start << " to " << end;
  }
  ScriptedClock clock;
  Worker worker(clock);
  worker.m_pfnWork = [&] {
    clock.m_uNow += (std::vector<DWORD>{5, 35, 60, 0})[static_cast<size_t>(worker.m_iCycles)];
  };
  ASSERT_TRUE(worker.m_Thread.Start(40, 10, 0));
  EXPECT_TRUE(worker.WaitForCycles(4));
  worker.m_Thread.Stop();
  EXPECT_EQ(clock.m_Waits, (std::vector<DWORD>{35, 10, 10, 40}));
}

TEST(Thread, ReportsWakeReasonsAndKeepsTheEndOfAPause) {
  struct Interruption {
    DWORD m_dwAfter;
    int m_iTask;  // ms of work; negative: none
    bool m_bTrigger, m_bEndSleep;
  };
  const struct {
    bool m_bControlled;
    std::map<std::size_t, Interruption> m_Interruptions;  // by number of the wait
    std::string m_Cycles;
    std::vector<DWORD> m_Waits;
  } cases[] = {{false,
                {{1, {15, 5, false, false}},
                 {2, {10, 0, false, false}},
                 {4, {10, 60, false, false}},
                 {5, {5, -1, false, true}}},
                "over@0 task@20 task@30 over@40 task@40 task@110 over@110 over@115 ",
                {40, 20, 10, 40, 40, 40}},
               {true,
                {{1, {15, 5, false, false}},
                 {2, {10, -1, true, false}},
                 {4, {20, 0, true, false}},
                 {5, {30, 90, false, false}}},
                "over@0 task@20 trigger@30 over@130 task@130 task+trigger@150 task@270 over@270 ",
                {100, 80, 100, 100, 100, 100}}};
  for (const auto& [controlled, interruptions, cycles, waits] : cases) {
    SCOPED_TRACE(controlled);
    ScriptedClock clock;
    Worker worker(clock);
    const std::uint64_t begin = clock.m_uNow;
    std::ostringstream journal;
    const auto post = [&](DWORD aWork) {
      worker.m_Thread.PostEvent(new Task([&, aWork] { clock.m_uNow += aWork; }));
    };
    worker.m_pfnWork = [&] {
      const unsigned wake = worker.m_uWake;
      std::string reasons;
      if ((wake & PThread::kTask) != 0) reasons += "+task";
      if ((wake & PThread::kTrigger) != 0) reasons += "+trigger";
      if ((wake & PThread::kPauseOver) != 0) reasons += "+over";
      if (worker.m_iCycles == 3) post(0);  // during a frame: runs after it
      journal << reasons.substr(1) << '@' << clock.m_uNow - begin << ' ';
    };
    clock.m_uLast = waits.size();
    clock.m_Interrupt = [&, &interruptions = interruptions](std::size_t aWait) -> std::optional<DWORD> {
      const auto found = interruptions.find(aWait);
      if (found == interruptions.end()) return std::nullopt;
      const auto& [after, task, triggers, endsSleep] = found->second;
      if (task >= 0) post(static_cast<DWORD>(task));
      if (triggers) worker.m_Thread.Trigger();
      worker.m_Thread.EndSleep();  // no effect on the worker
      if (endsSleep) std::thread([&] { worker.m_Thread.EndSleep(); }).join();
      return after;
    };
    worker.m_Thread.SetControlled(controlled, 100);
    ASSERT_TRUE(worker.m_Thread.Start(40, 10, 0));
    EXPECT_TRUE(worker.WaitForCycles(8));
    worker.m_Thread.Stop();
    EXPECT_EQ(journal.str(), cycles);
    EXPECT_EQ(clock.m_Waits, waits);
  }
}

TEST(Thread, ControlledModeCyclesOncePerTrigger) {
  Worker worker;
  ASSERT_TRUE(worker.m_Thread.Start(0, 0, 0, PThread::FirstCycle::kAfterResume));
  worker.m_Thread.Trigger();
  worker.m_Thread.SetControlled(true, kMaximumWait);
  EXPECT_FALSE(worker.Cycles()) << "the first cycle needs a resume";
  worker.m_Thread.Resume();
  ASSERT_TRUE(worker.WaitForCycles(1)) << "the first cycle needs no trigger";
  EXPECT_FALSE(worker.Cycles()) << "a trigger before controlled mode has no effect";
  // Several triggers during a cycle cause one further cycle.
  worker.m_pfnWork = [&] {
    for (int i = 0; i < 3 && worker.m_iCycles == 1; ++i) worker.m_Thread.Trigger();
  };
  worker.m_Thread.Trigger();
  ASSERT_TRUE(worker.WaitForCycles(3));
  EXPECT_FALSE(worker.Cycles());
  worker.m_Thread.SetControlled(true, 0);
  worker.m_Thread.Trigger();
  EXPECT_TRUE(worker.WaitForCycles(50)) << "without any wait";
  worker.m_Thread.SetControlled(true, PClock::kForever);
  EXPECT_TRUE(Eventually([&] { return !worker.Cycles(); })) << "a cycle without a trigger";
  const int before = worker.m_iCycles;
  worker.m_Thread.SetControlled(false, 0);
  EXPECT_TRUE(worker.WaitForCycles(before + 10)) << "an unlimited wait ends with the mode";
}

TEST(Thread, StopEndsEachWait) {
  enum Wait { kForever, kSleep, kPark, kHeldBack };
  for (const Wait wait : {kForever, kSleep, kPark, kHeldBack}) {
    Worker worker;
    if (wait == kForever) worker.m_Thread.SetControlled(true, PClock::kForever);
    if (wait == kPark) worker.m_Thread.RequestSuspend();
    ASSERT_TRUE(worker.m_Thread.Start(
        kMaximumWait, 0, 0,
        wait == kHeldBack ? PThread::FirstCycle::kAfterResume : PThread::FirstCycle::kAtOnce));
    const int cycles = wait == kForever || wait == kSleep ? 1 : 0;
    ASSERT_TRUE(worker.WaitForCycles(cycles)) << wait;
    if (wait == kPark) {
      ASSERT_TRUE(Eventually([&] { return worker.m_Thread.IsParkedNow(); }));
    }
    if (wait == kSleep) worker.m_Thread.Trigger();
    EXPECT_FALSE(worker.Cycles()) << wait;
    EXPECT_EQ(worker.m_iCycles, cycles) << wait;
    std::thread second([&] { worker.m_Thread.Stop(); });
    worker.m_Thread.Stop();
    second.join();
    EXPECT_TRUE(worker.m_bEndedOnWorker) << wait << ": the last call is on the worker";
    // Calls after the end return at once.
    worker.m_Thread.RequestSuspend();
    worker.m_Thread.Resume();
    EXPECT_EQ(worker.m_Thread.SetPriority(1), 0) << wait;
    EXPECT_FALSE(worker.m_Thread.IsParked()) << wait;
    EXPECT_FALSE(worker.m_Thread.Start(1, 1, 0)) << wait;
  }
}

TEST(Thread, ResumeAroundAParkIsNotLost) {
  Worker worker;
  ASSERT_TRUE(worker.m_Thread.Start(0, 0, 0));
  for (int i = 0; i < 200; ++i) {
    worker.m_Thread.RequestSuspend();
    worker.m_Thread.RequestSuspend();  // requests are not counted
    if (i % 3 == 0) {
      ASSERT_TRUE(Eventually([&] { return worker.m_Thread.IsParked(); })) << i;
    }
    const int before = worker.m_iCycles;
    worker.m_Thread.Resume();
    EXPECT_FALSE(worker.m_Thread.IsParkedNow());
    ASSERT_TRUE(worker.WaitForCycles(before + 1)) << i;
  }
}
