// LogOutput: a file, or stderr. Any thread.

#include "platform/LogOutput.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "platform/linux/display/PipeSignal.h"

namespace {

constexpr int kNoFile = -1;

constinit std::atomic<int> g_iFile{kNoFile};

/// Returns whether a write would not block. A pipe may be full, a terminal stopped.
bool IsWilling(int aFile) noexcept {
  pollfd look{aFile, POLLOUT, 0};
  return poll(&look, 1, 0) == 1 && look.revents == POLLOUT;
}

}  // namespace

void ReadLogVariable(const char* aName, char* aText, std::size_t aRoom) noexcept {
  const char* value = secure_getenv(aName);
  if (value == nullptr) value = "";
  const std::size_t length = strnlen(value, aRoom - 1);
  std::memcpy(aText, value, length);
  aText[length] = '\0';
}

// Without O_NONBLOCK, open would wait for a reader of a pipe.
bool OpenLogFile(const char* aPath) noexcept {
  const int file = open(aPath, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0666);
  if (file < 0) return false;
  int before = kNoFile;
  if (!g_iFile.compare_exchange_strong(before, file)) close(file);
  return true;
}

void CloseLogFile() noexcept {
  if (const int file = g_iFile.exchange(kNoFile); file != kNoFile) close(file);
}

bool HasLogOutput() noexcept { return g_iFile != kNoFile || fcntl(STDERR_FILENO, F_GETFD) >= 0; }

bool WriteLogLine(const char* aLine, std::size_t aLength) noexcept {
  const PipeSignal quiet;
  const int own = g_iFile, file = own != kNoFile ? own : STDERR_FILENO;
  if (!IsWilling(file)) return false;
  ssize_t written = 0;
  do written = write(file, aLine, aLength);
  while (written < 0 && errno == EINTR);
  return written == static_cast<ssize_t>(aLength);
}
