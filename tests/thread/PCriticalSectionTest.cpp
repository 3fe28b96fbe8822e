// The lock of the component: recursion, faults of the caller, fairness, destruction while it is held.

#include "thread/PCriticalSection.h"

#include <gllib/GLPlatform.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

TEST(CriticalSection, ItsHolderEntersAgainAndOthersWaitForTheLastLeave) {
  PCriticalSection section;
  section.Enter();
  section.Enter();
  std::atomic<bool> inside = false;
  std::thread other([&] {
    EXPECT_FALSE(section.IsHeldHere());
    const PLock lock(section);
    inside = true;
  });
  section.Leave();
  std::this_thread::sleep_for(20ms);
  EXPECT_FALSE(inside) << "one entry is still there";
  EXPECT_TRUE(section.IsHeldHere());
  section.Leave();
  other.join();
  EXPECT_TRUE(inside);
  EXPECT_FALSE(section.IsHeldHere());
}

TEST(CriticalSection, LeavingWithoutHavingEnteredThrowsAndLeavesNothing) {
  PCriticalSection section;
  EXPECT_THROW(section.Leave(), HRESULT);
  section.Enter();
  std::thread([&] {
    try {
      section.Leave();
      ADD_FAILURE() << "another thread left for the holder";
    } catch (HRESULT result) {
      EXPECT_EQ(result, E_FAIL);
    }
  }).join();
  EXPECT_TRUE(section.IsHeldHere());
  section.Leave();
  EXPECT_THROW(section.Leave(), HRESULT);
}

TEST(CriticalSection, WhoWaitsGetsInBeforeTheLastHolderAgain) {
  PCriticalSection section;
  std::atomic<bool> stop = false;
  std::atomic<int> turns = 0;
  std::thread greedy([&] {
    while (!stop) {
      const PLock lock(section);
      ++turns;
      std::this_thread::sleep_for(5ms);  // the lock is free for no time worth speaking of
    }
  });
  while (turns == 0) std::this_thread::yield();
  for (int i = 0; i < 5; ++i) {
    const int before = turns;
    const PLock lock(section);
    EXPECT_LE(turns - before, 2) << "entry "
                                 << i;  // the turn that ran, and one that began before this thread queued
  }
  stop = true;
  greedy.join();
}

TEST(CriticalSection, WaitersEnterInTheOrderOfArrival) {
  PCriticalSection section;
  std::vector<int> order;
  std::vector<std::thread> threads;
  {
    const PLock lock(section);
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&, i] {
        const PLock inner(section);
        order.push_back(i);
      });
      std::this_thread::sleep_for(30ms);
    }
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(order, (std::vector{0, 1, 2, 3}));
}

TEST(CriticalSection, GuardsWhatManyThreadsChange) {
  PCriticalSection section;
  int sum = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int n = 0; n < 2000; ++n) {
        const PLock outer(section);
        const PLock inner(section);
        ++sum;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(sum, 8000);
}

TEST(CriticalSection, ItsEndWaitsForAHolderElsewhereButNotForTheCaller) {
  std::optional<PCriticalSection> section(std::in_place);
  section->Enter();
  section.reset();

  section.emplace();
  std::atomic<bool> held = false, left = false;
  std::thread holder([&] {
    section->Enter();
    held = true;
    std::this_thread::sleep_for(30ms);
    left = true;
    section->Leave();
  });
  while (!held) std::this_thread::yield();
  section.reset();
  EXPECT_TRUE(left);
  holder.join();
}
