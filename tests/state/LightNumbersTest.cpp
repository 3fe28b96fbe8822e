// The eight light numbers of the process: one holder each, handed on when it goes.

#include "state/LightNumbers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

TEST(LightNumbers, TheNinthWaitsForTheFirstThatGoes) {
  std::vector<int> holders(9, LightNumbers::kNone);
  for (int i = 0; i < 8; ++i) EXPECT_EQ(LightNumbers::Take(holders[i]), i);
  EXPECT_EQ(LightNumbers::Take(holders[8]), LightNumbers::kNone);
  EXPECT_EQ(LightNumbers::Take(holders[3]), 3) << "a holder keeps its own";
  LightNumbers::Free(holders[8]);  // one that has none frees none
  LightNumbers::Free(holders[5]);
  EXPECT_EQ(LightNumbers::Take(holders[8]), 5);
  EXPECT_EQ(LightNumbers::Take(holders[5]), LightNumbers::kNone);
  for (int& holder : holders) LightNumbers::Free(holder);
}

TEST(LightNumbers, ThreadsThatRaceNeverShareOne) {
  std::atomic<int> users[8] = {};
  std::atomic<bool> shared = false;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int n = 0; n < 1000; ++n) {
        int held[3] = {LightNumbers::kNone, LightNumbers::kNone, LightNumbers::kNone};
        for (int& number : held) {
          if (LightNumbers::Take(number) != LightNumbers::kNone && ++users[number] != 1) shared = true;
        }
        for (int& number : held) {
          if (number != LightNumbers::kNone) --users[number];
          LightNumbers::Free(number);
        }
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_FALSE(shared);
}
