// Thread priorities as nice values, which Linux stores per thread. They are offsets from the nice value of
// the host process. Any thread.

#include "platform/ThreadPriority.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace {

struct NiceOffset {
  int m_iPriority;
  int m_iOffset;
};

constexpr NiceOffset kOffsets[] = {
    {THREAD_PRIORITY_IDLE, 19},           {THREAD_PRIORITY_LOWEST, 10},
    {THREAD_PRIORITY_BELOW_NORMAL, 5},    {THREAD_PRIORITY_NORMAL, 0},
    {THREAD_PRIORITY_ABOVE_NORMAL, -5},   {THREAD_PRIORITY_HIGHEST, -10},
    {THREAD_PRIORITY_TIME_CRITICAL, -20},
};

/// Returns the offset of the nearest known priority.
int OffsetOf(int aPriority) noexcept {
  const auto distance = [&](const NiceOffset& aOffset) {
    return std::abs(std::int64_t{aPriority} - aOffset.m_iPriority);
  };
  return std::min_element(
             std::begin(kOffsets), std::end(kOffsets),
             [&](const auto& aLeft, const auto& aRight) { return distance(aLeft) < distance(aRight); })
      ->m_iOffset;
}

/// Returns the lowest nice value that an unprivileged process may set.
int LowestNice() noexcept {
  rlimit limit{};
  if (getrlimit(RLIMIT_NICE, &limit) != 0 || limit.rlim_cur > 40) return -20;
  return 20 - static_cast<int>(limit.rlim_cur);
}

}  // namespace

DWORD ThisThreadNumber() noexcept { return static_cast<DWORD>(syscall(SYS_gettid)); }

bool SetPriorityOfThread(DWORD aThread, int aPriority) noexcept {
  const int base = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
  const int present = getpriority(PRIO_PROCESS, aThread);
  const int wanted = std::clamp(base + OffsetOf(aPriority), -20, 19);
  if (setpriority(PRIO_PROCESS, aThread, wanted) == 0) return true;
  const int granted = std::max(wanted, LowestNice());
  return granted < present && setpriority(PRIO_PROCESS, aThread, granted) == 0;
}
