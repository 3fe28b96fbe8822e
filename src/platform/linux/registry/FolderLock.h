// FolderLock: excludes other threads and processes from changing the registry files in one directory. Used on
// the stack of the thread that changes a file.

#pragma once

#include <string>

#include "platform/Registry.h"

/// The lock belongs to an open directory, so it excludes both threads and processes.
/// The destructor unlocks explicitly. A child forked by another thread has a copy of the descriptor, so
/// closing only this one would leave the lock held. The lock is not in process memory, so a forked child can
/// take it.
class FolderLock {
 public:
  /// Creates the directory if it does not exist. Waits at most 10 s for the lock.
  explicit FolderLock(const std::string& aFolder);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  /// @return ERROR_SUCCESS if the lock is held or the file system has no locks; ERROR_ACCESS_DENIED if the
  ///         directory cannot be opened; ERROR_LOCK_VIOLATION if another program has held the lock too long
  LSTATUS Status() const noexcept { return m_iStatus; }

 private:
  int m_iFolder = -1;
  LSTATUS m_iStatus = ERROR_ACCESS_DENIED;
};
