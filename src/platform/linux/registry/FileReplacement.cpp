// Replacement of a whole file: writes a new file with a unique name in the same directory, then fsync,
// rename, and fsync of the directory. Any thread.

#include "platform/linux/registry/FileReplacement.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <utility>

namespace {

LSTATUS StatusOf(int aError) noexcept {
  return aError == EACCES || aError == EPERM || aError == EROFS ? ERROR_ACCESS_DENIED : ERROR_WRITE_FAULT;
}

/// An open file or directory.
class Descriptor {
 public:
  explicit Descriptor(int aFile) noexcept : m_iFile(aFile) {}
  ~Descriptor() {
    if (m_iFile >= 0) close(m_iFile);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  bool IsOpen() const noexcept { return m_iFile >= 0; }
  int Get() const noexcept { return m_iFile; }

  bool Sync() const noexcept {
    int result = 0;
    do result = fsync(m_iFile);
    while (result != 0 && errno == EINTR);
    return result == 0;
  }

 private:
  const int m_iFile;
};

/// A new file that the destructor deletes unless it was renamed. Its name is random and must not exist, so
/// that a file or link created by another user is never written.
class NewFile {
 public:
  explicit NewFile(const std::string& aTarget, const std::optional<struct stat>& aOld)
      : m_sName(NameBeside(aTarget)),
        m_File(
            open(m_sName.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, aOld ? 0600 : 0666)) {
    m_iStatus = m_File.IsOpen() ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    if (!m_File.IsOpen() || !aOld) return;
    // Sets the owner first, since chown may clear permission bits.
    if (fchown(m_File.Get(), aOld->st_uid, aOld->st_gid) != 0) {
      // without the privilege the new file belongs to the user who writes it
    }
    if (fchmod(m_File.Get(), aOld->st_mode & 0777) != 0) m_iStatus = StatusOf(errno);
  }
  ~NewFile() {
    if (m_File.IsOpen() && !m_sName.empty()) unlink(m_sName.c_str());
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  LSTATUS Write(const std::string& aText) noexcept {
    if (m_iStatus != ERROR_SUCCESS) return m_iStatus;
    for (std::size_t done = 0; done < aText.size();) {
      const ssize_t count = write(m_File.Get(), aText.data() + done, aText.size() - done);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return ERROR_WRITE_FAULT;
      done += static_cast<std::size_t>(count);
    }
    return m_File.Sync() ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
  }

  LSTATUS Rename(const std::string& aTarget) noexcept {
    if (std::rename(m_sName.c_str(), aTarget.c_str()) != 0) return StatusOf(errno);
    m_sName.clear();
    return ERROR_SUCCESS;
  }

 private:
  static std::string NameBeside(const std::string& aTarget) {
    std::uint64_t random = 0;
    if (getrandom(&random, sizeof(random), GRND_NONBLOCK) != sizeof(random))
      random = static_cast<std::uint64_t>(getpid());  // O_EXCL still protects against an existing file
    char digits[24] = {};
    std::snprintf(digits, sizeof(digits), ".%016llx.new", static_cast<unsigned long long>(random));
    return aTarget + digits;
  }

  std::string m_sName;
  const Descriptor m_File;
  LSTATUS m_iStatus;
};

/// Writes the new name to the disk. Some file systems cannot sync a directory and return EINVAL.
LSTATUS SyncFolder(const std::filesystem::path& aFolder) {
  const Descriptor folder(open(aFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return folder.IsOpen() && !folder.Sync() && errno != EINVAL ? ERROR_WRITE_FAULT : ERROR_SUCCESS;
}

}  // namespace

LSTATUS ReplaceFile(const std::string& aPath, const std::string& aText) {
  std::error_code absent;
  std::filesystem::path target = std::filesystem::canonical(aPath, absent);
  if (absent) target = aPath;
  std::optional<struct stat> old(std::in_place);
  if (stat(target.c_str(), &*old) != 0) old.reset();
  {
    NewFile file(target, old);
    LSTATUS status = file.Write(aText);
    if (status == ERROR_SUCCESS) status = file.Rename(target);
    if (status != ERROR_SUCCESS) return status;
  }
  return SyncFolder(target.parent_path());
}
