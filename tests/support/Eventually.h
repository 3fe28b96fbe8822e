// Eventually: waits for the result of another thread.

#pragma once

#include <chrono>
#include <thread>

/// Waits until a condition is true. @return false if it is not true within a minute
template <class Condition>
bool Eventually(Condition aHolds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (!aHolds()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}
