// The registry files when the system fails: each read, write, sync and rename of a change fails in turn, and
// signals interrupt it. This program replaces functions of the C library, which fail if a test requests it.
// No display.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "platform/RegistryBatch.h"
#include "support/TestRegistry.h"

namespace {

using namespace std::chrono_literals;

enum class Call { kRead, kWrite, kSync, kRename };

/// The fault for the calling thread: the m_iTurn-th call fails with m_iError, or transfers a part of the
/// bytes.
struct Fault {
  Call m_Call = Call::kRead;
  int m_iTurn = 0;   // counts down; 0: none
  int m_iError = 0;  // 0: transfers a part of the bytes
};
thread_local Fault* g_pFault = nullptr;

/// Returns whether this call fails. @param aHalf receives whether it transfers a part of the bytes
bool Fails(Call aCall, bool& aHalf) {
  Fault* fault = g_pFault;
  aHalf = false;
  if (fault == nullptr || fault->m_Call != aCall || fault->m_iTurn == 0 || --fault->m_iTurn > 0) return false;
  aHalf = fault->m_iError == 0;
  errno = fault->m_iError;
  return !aHalf;
}

template <class Function>
Function* Next(Function*, const char* aName) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, aName));
}

}  // namespace

extern "C" {

ssize_t read(int aFile, void* aBytes, size_t aCount) {
  static const auto next = Next(&read, "read");
  bool half = false;
  return Fails(Call::kRead, half) ? -1 : next(aFile, aBytes, half && aCount > 1 ? 10 : aCount);
}

ssize_t write(int aFile, const void* aBytes, size_t aCount) {
  static const auto next = Next(&write, "write");
  bool half = false;
  return Fails(Call::kWrite, half) ? -1 : next(aFile, aBytes, half ? (aCount + 1) / 2 : aCount);
}

int fsync(int aFile) {
  static const auto next = Next(&fsync, "fsync");
  bool half = false;
  return Fails(Call::kSync, half) ? -1 : next(aFile);
}

int rename(const char* aOld, const char* aNew) noexcept {
  static const auto next = Next(&rename, "rename");
  bool half = false;
  return Fails(Call::kRename, half) ? -1 : next(aOld, aNew);
}

}  // extern "C"

namespace {

const std::string kOthers =
    "Windows Registry Editor Version 5.00\r\n\r\n; kept by hand\r\n[HKEY_CLASSES_ROOT\\Other]\r\n"
    "@=\"kept\"\r\n\"Long\"=\"" +
    std::string(40000, 'x') + "\"\r\n";

class RegistryFaults : public testing::Test {
 protected:
  ~RegistryFaults() override { g_pFault = nullptr; }

  /// Writes a value during a fault.
  LSTATUS Enter(Fault aFault = {}) const {
    RegistryBatch batch;
    batch.SetText("New", "text");
    g_pFault = &aFault;
    const LSTATUS status = batch.Commit();
    g_pFault = nullptr;
    return status;
  }
  void Put() const { m_Folder.Put("machine.reg", kOthers); }
  std::string Get() const { return m_Folder.Get("machine.reg"); }
  bool IsEntered() const {
    return Get().find("[HKEY_CLASSES_ROOT\\New]\r\n@=\"text\"\r\n") != std::string::npos;
  }
  std::string Files() const {
    std::string names;
    for (const auto& file : std::filesystem::directory_iterator(m_Folder.Path()))
      names += file.path().filename().string() + ' ';
    return names;
  }

  const TestRegistry m_Folder;
};

}  // namespace

TEST_F(RegistryFaults, LeaveTheOldFileOrTheNewOne) {
  const struct {
    Call m_Call;
    int m_iTurn, m_iError;
    LSTATUS m_iStatus;
    bool m_bEntered;
  } cases[] = {
      {Call::kRead, 1, EIO, ERROR_READ_FAULT, false},
      {Call::kRead, 2, EIO, ERROR_READ_FAULT, false},  // after a part of the file has been read
      {Call::kRead, 3, EIO, ERROR_READ_FAULT, false},
      {Call::kRead, 4, EIO, ERROR_READ_FAULT, false},  // at the end of the file
      {Call::kRead, 1, EINTR, ERROR_SUCCESS, true},
      {Call::kRead, 2, 0, ERROR_SUCCESS, true},  // fewer bytes than requested
      {Call::kWrite, 1, EIO, ERROR_WRITE_FAULT, false},
      {Call::kWrite, 1, ENOSPC, ERROR_WRITE_FAULT, false},
      {Call::kWrite, 1, EINTR, ERROR_SUCCESS, true},
      {Call::kWrite, 1, 0, ERROR_SUCCESS, true},
      {Call::kSync, 1, EIO, ERROR_WRITE_FAULT, false},
      {Call::kSync, 1, EINTR, ERROR_SUCCESS, true},
      {Call::kRename, 1, EIO, ERROR_WRITE_FAULT, false},
      {Call::kRename, 1, EACCES, ERROR_ACCESS_DENIED, false},
      {Call::kSync, 2, EIO, ERROR_WRITE_FAULT, true},  // of the folder: the new file is in place
      {Call::kSync, 2, EINVAL, ERROR_SUCCESS, true},   // a file system that does not sync folders
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(std::to_string(static_cast<int>(one.m_Call)) + ", turn " + std::to_string(one.m_iTurn) +
                 ", error " + std::to_string(one.m_iError));
    Put();
    EXPECT_EQ(Enter({one.m_Call, one.m_iTurn, one.m_iError}), one.m_iStatus);
    EXPECT_EQ(IsEntered(), one.m_bEntered);
    if (!one.m_bEntered) {
      EXPECT_EQ(Get(), kOthers);
    }
    EXPECT_NE(Get().find(kOthers.substr(kOthers.find("; kept by hand"))), std::string::npos) << "kept";
    EXPECT_EQ(Files(), "machine.reg ");
  }
}
