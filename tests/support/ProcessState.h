// Resources of the process, from /proc. Linux.

#pragma once

#include <filesystem>

inline long EntriesOf(const char* aFolder) {
  return std::distance(std::filesystem::directory_iterator(aFolder), {});
}
inline long ThreadsOfProcess() { return EntriesOf("/proc/self/task"); }
inline long DescriptorsOfProcess() { return EntriesOf("/proc/self/fd"); }
