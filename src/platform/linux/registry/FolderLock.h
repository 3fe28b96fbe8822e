// FolderLock: keeps other threads and processes from changing the registry files of one folder. Used on the
// stack of the thread that changes a file.

#pragma once

#include <string>

#include "platform/Registry.h"

/// The lock belongs to an open folder, not to a thread or a process, so one lock serves both. It is given
/// back explicitly: a child that another thread forks meanwhile has a copy of the descriptor, and closing
/// this one alone would leave the lock with the child. Nothing of it is memory of the process, so a forked
/// child can take it too.
class FolderLock {
 public:
  /// Makes the folder if it is absent. Waits at most 10 s.
  explicit FolderLock(const std::string& aFolder);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  /// @return ERROR_SUCCESS once the lock is held, or where the file system has no locks; ERROR_ACCESS_DENIED
  /// for a
  ///         folder that can't be opened, ERROR_LOCK_VIOLATION when another program holds the lock too long
  LSTATUS Status() const noexcept { return m_iStatus; }

 private:
  int m_iFolder = -1;
  LSTATUS m_iStatus = ERROR_ACCESS_DENIED;
};
