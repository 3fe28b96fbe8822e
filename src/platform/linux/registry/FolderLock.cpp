// FolderLock: takes the lock within a limited time. Used by the thread that changes a file.

#include "platform/linux/registry/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using namespace std::chrono_literals;

/// Every user who can read the directory can hold its lock, so the wait must be limited.
constexpr auto kLongestWait = 10s;

LSTATUS Wait(int aFolder) {
  const auto end = std::chrono::steady_clock::now() + kLongestWait;
  while (flock(aFolder, LOCK_EX | LOCK_NB) != 0) {
    // the file system does not support locks
    if (errno != EWOULDBLOCK && errno != EINTR) return ERROR_SUCCESS;
    if (std::chrono::steady_clock::now() >= end) return ERROR_LOCK_VIOLATION;
    std::this_thread::sleep_for(2ms);
  }
  return ERROR_SUCCESS;
}

}  // namespace

FolderLock::FolderLock(const std::string& aFolder) {
  std::error_code error;
  std::filesystem::create_directories(aFolder, error);
  m_iFolder = open(aFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (m_iFolder >= 0) m_iStatus = Wait(m_iFolder);
}

FolderLock::~FolderLock() {
  if (m_iFolder < 0) return;
  if (m_iStatus == ERROR_SUCCESS) flock(m_iFolder, LOCK_UN);
  close(m_iFolder);
}
