// Thread priorities on Linux: the nearest that the system permits, for one thread. No display.

#include "platform/ThreadPriority.h"
#include "support/Test.h"

#include <sys/resource.h>
#include <unistd.h>

TEST(ThreadPriority, LowersOneThread) {
  struct Case {
    int m_iPriority, m_iNice;
  };
  const int base = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
  std::thread([&] {
    const DWORD self = ThisThreadNumber();
    // Each priority is lower than the previous one: the system permits this to every process.
    for (const auto [priority, nice] :
         {Case{0, 0}, {-1, 5}, {-2, 10}, {-8, 10}, {-9, 19}, {-15, 19}, {-1000, 19}}) {
      EXPECT_TRUE(SetPriorityOfThread(self, priority)) << priority;
      EXPECT_EQ(getpriority(PRIO_PROCESS, self), std::min(base + nice, 19)) << priority;
    }
  }).join();
  EXPECT_EQ(getpriority(PRIO_PROCESS, static_cast<id_t>(getpid())), base);
  EXPECT_FALSE(SetPriorityOfThread(0x7FFFFFFF, -1)) << "no such thread";
}
