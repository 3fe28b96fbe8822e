// FifoMutex: a wait that ends without the lock leaves the queue. No display.

#include "platform/FifoMutex.h"

#include "support/Test.h"

using namespace std::chrono_literals;

TEST(FifoMutex, SkipsAThreadThatStoppedWaiting) {
  FifoMutex mutex(true);  // held from the start
  const auto wait = [&](std::chrono::milliseconds aLongest) {
    auto result = std::async(std::launch::async, [&, aLongest] { return mutex.TryLockFor(aLongest); });
    std::this_thread::sleep_for(20ms);  // the order of arrival
    return result;
  };
  auto first = wait(10s), second = wait(50ms), third = wait(10s);
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
