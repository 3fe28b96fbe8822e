// Thread priorities on Windows. Any thread.

#include "platform/ThreadPriority.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace {

constexpr int kPriorities[] = {THREAD_PRIORITY_IDLE,         THREAD_PRIORITY_LOWEST,
                               THREAD_PRIORITY_BELOW_NORMAL, THREAD_PRIORITY_NORMAL,
                               THREAD_PRIORITY_ABOVE_NORMAL, THREAD_PRIORITY_HIGHEST,
                               THREAD_PRIORITY_TIME_CRITICAL};

int Nearest(int aPriority) noexcept {
  const auto distance = [&](int aKnown) { return std::abs(std::int64_t{aPriority} - aKnown); };
  return *std::min_element(std::begin(kPriorities), std::end(kPriorities),
                           [&](int aLeft, int aRight) { return distance(aLeft) < distance(aRight); });
}

}  // namespace

DWORD ThisThreadNumber() noexcept { return GetCurrentThreadId(); }

bool SetPriorityOfThread(DWORD aThread, int aPriority) noexcept {
  const HANDLE thread = OpenThread(THREAD_SET_INFORMATION, FALSE, aThread);
  if (thread == nullptr) return false;
  const bool granted = SetThreadPriority(thread, Nearest(aPriority)) != FALSE;
  CloseHandle(thread);
  return granted;
}
