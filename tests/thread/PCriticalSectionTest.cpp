// PCriticalSection: recursion, invalid calls, fairness, and destruction while it is held. FifoMutexTest has
// the order of several waiting threads. No display.

#include "thread/PCriticalSection.h"

#include <optional>

#include "support/Test.h"

using namespace std::chrono_literals;

TEST(CriticalSection, IsLeftByItsHolderOncePerEntry) {
  PCriticalSection section;
  EXPECT_THROW(section.Leave(), HRESULT);
  section.Enter();
  section.Enter();
  std::atomic<bool> inside = false;
  std::thread other([&] {
    EXPECT_THROW(section.Leave(), HRESULT) << "this thread has not entered";
    const PLock lock(section);
    inside = true;
  });
  section.Leave();
  std::this_thread::sleep_for(20ms);
  EXPECT_FALSE(inside) << "one entry remains";
  EXPECT_TRUE(section.IsHeldHere());
  section.Leave();
  other.join();
  EXPECT_TRUE(inside);
  EXPECT_THROW(section.Leave(), HRESULT);
}

TEST(CriticalSection, WaitingThreadEntersBeforeTheLastHolder) {
  PCriticalSection section;
  std::atomic<bool> stop = false;
  std::atomic<int> turns = 0;
  std::thread greedy([&] {
    while (!stop) {
      const PLock lock(section);
      ++turns;
      std::this_thread::sleep_for(5ms);
    }
  });
  while (turns == 0) std::this_thread::yield();
  int late = 0;  // more turns than the running one and one that began before this thread waited
  for (int i = 0; i < 9; ++i) {
    const int before = turns;
    const PLock lock(section);
    late += turns - before > 2 ? 1 : 0;
  }
  EXPECT_LE(late, 4) << "under load this thread may not begin to wait in time";
  stop = true;
  greedy.join();
}

TEST(CriticalSection, DestructorWaitsForAnotherHolder) {
  std::optional<PCriticalSection> section(std::in_place);
  section->Enter();
  section.reset();
  section.emplace();
  std::atomic<bool> held = false, left = false;
  std::thread holder([&] {
    const PLock lock(*section);
    held = true;
    std::this_thread::sleep_for(30ms);
    left = true;
  });
  while (!held) std::this_thread::yield();
  section.reset();
  EXPECT_TRUE(left);
  holder.join();
}
