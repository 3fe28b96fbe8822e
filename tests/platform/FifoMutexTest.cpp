// FifoMutex: the order of waiting threads; a wait that ends without the lock leaves the queue. No display.

#include "platform/FifoMutex.h"

#include "support/Test.h"

using namespace std::chrono_literals;

TEST(FifoMutex, SkipsAThreadThatStoppedWaiting) {
  FifoMutex mutex(true);  // held from the start
  const auto wait = [&](auto aEnter) {
    auto result = std::async(std::launch::async, aEnter);
    std::this_thread::sleep_for(20ms);  // the order of arrival
    return result;
  };
  auto first = wait([&] { return mutex.TryLockFor(10s); });
  auto second = wait([&] { return mutex.TryLockFor(50ms); });
  auto third = wait([&] { return mutex.Lock(), true; });
  EXPECT_FALSE(second.get());
  EXPECT_FALSE(mutex.TryLock());
  mutex.Unlock();
  EXPECT_TRUE(first.get());
  EXPECT_EQ(third.wait_for(20ms), std::future_status::timeout) << "the first one holds the lock";
  mutex.Unlock();
  EXPECT_TRUE(third.get());
  mutex.Unlock();
  EXPECT_TRUE(mutex.TryLock());
}
