// The eight light numbers of the process: one holder each, handed on when it goes.

#include "state/LightNumbers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

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
