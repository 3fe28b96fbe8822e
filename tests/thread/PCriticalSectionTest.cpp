// PCriticalSection: recursion, invalid calls, and destruction while it is held. FifoMutexTest has the order
// of waiting threads. No display.

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

TEST(CriticalSection, DestructorWaitsForAnotherHolder) {
  std::optional<PCriticalSection> section(std::in_place);
  section->Enter();
  section.reset();
  section.emplace();
  std::atomic<bool> held = false, left = false;
  const std::jthread holder([&] {
    const PLock lock(*section);
    held = true;
    std::this_thread::sleep_for(30ms);
    left = true;
  });
  while (!held) std::this_thread::yield();
  section.reset();
  EXPECT_TRUE(left);
}
