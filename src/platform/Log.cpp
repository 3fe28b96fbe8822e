// Log: the level and the formatting of lines. Any thread. Allocates no memory and takes no lock.

#include "platform/Log.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

#include "platform/LogOutput.h"
#include "platform/Window.h"

constinit std::atomic<LogLevel> g_LogLevel{LogLevel::kUnread};

namespace {

constexpr std::size_t kLongestLine = 1024;  // below the size that a pipe writes atomically

constexpr const char* kNames[] = {"off", "error", "warning", "info", "debug"};

constinit std::atomic<LogSink> g_pfnSink{nullptr};
constinit std::atomic<unsigned> g_uLost{0};
thread_local unsigned t_uContext = 0;

/// @return false if the line is lost
bool Send(const char* aLine, std::size_t aLength) noexcept {
  if (const LogSink sink = g_pfnSink.load(std::memory_order_acquire)) {
    sink(aLine, aLength);
    return true;
  }
  return WriteLogLine(aLine, aLength);
}

/// Formats one line on the stack.
class Line {
 public:
  explicit Line(LogLevel aLevel) noexcept {
    Add("gllib: %s: ", kNames[static_cast<int>(aLevel)]);
    if (t_uContext != 0) Add("context %u, ", t_uContext);
    Add("thread %u: ", static_cast<unsigned>(GetCurrentThreadId()));
  }

  [[gnu::format(printf, 2, 3)]] void Add(const char* aFormat, ...) noexcept {
    va_list arguments;
    va_start(arguments, aFormat);
    AddAll(aFormat, arguments);
    va_end(arguments);
  }

  [[gnu::format(printf, 2, 0)]] void AddAll(const char* aFormat, va_list aArguments) noexcept {
    const std::size_t room = kLongestLine - m_uLength;
    const int length = std::vsnprintf(m_szText + m_uLength, room, aFormat, aArguments);
    if (length > 0) m_uLength += std::min(static_cast<std::size_t>(length), room - 1);
  }

  /// Writes the line. Replaces control characters, since a name in a message may contain line breaks.
  /// @return false if the line is lost
  bool Write() noexcept {
    std::replace_if(
        m_szText, m_szText + m_uLength,
        [](char aCharacter) { return (aCharacter >= 0 && aCharacter < ' ') || aCharacter == 0x7F; }, '?');
    m_szText[m_uLength++] = '\n';
    m_szText[m_uLength] = '\0';
    return Send(m_szText, m_uLength);
  }

 private:
  char m_szText[kLongestLine + 1]{};  // one more for the line break
  std::size_t m_uLength = 0;
};

[[gnu::format(printf, 2, 0)]] void Write(LogLevel aLevel, const char* aFormat, va_list aArguments) noexcept {
  const int error = errno;
  if (const unsigned lost = g_uLost.exchange(0, std::memory_order_relaxed); lost != 0) {
    Line line(LogLevel::kWarning);
    line.Add("%u log lines are lost: they could not be written at once", lost);
    if (!line.Write()) g_uLost.fetch_add(lost, std::memory_order_relaxed);
  }
  Line line(aLevel);
  line.AddAll(aFormat, aArguments);
  if (!line.Write()) g_uLost.fetch_add(1, std::memory_order_relaxed);
  errno = error;
}

}  // namespace

// Several threads may run this concurrently. They compute the same level. At worst each opens the file, and
// all but one close it.
LogLevel StartLog() noexcept {
  char wanted[64];
  ReadLogVariable("GLLIB_LOG", wanted, sizeof(wanted));
  LogLevel level = LogLevel::kOff;
  bool known = *wanted == '\0';
  for (int i = 0; i < 5; ++i) {
    if (std::strcmp(wanted, kNames[i]) != 0) continue;
    level = static_cast<LogLevel>(i);
    known = true;
  }
  if (!known) level = LogLevel::kWarning;
  char path[1024] = "";
  if (level != LogLevel::kOff) ReadLogVariable("GLLIB_LOG_FILE", path, sizeof(path));
  const bool opened = *path == '\0' || OpenLogFile(path);
  // The connection to the X server could get the number of a closed stderr, and lines would break it.
  if (!HasLogOutput()) level = LogLevel::kOff;
  LogLevel before = LogLevel::kUnread;
  if (!g_LogLevel.compare_exchange_strong(before, level)) return before;
  if (!known)
    LogWarning("GLLIB_LOG is \"%s\", which is not a level: warnings and errors are written", wanted);
  if (!opened) LogWarning("the file of GLLIB_LOG_FILE, \"%s\", cannot be opened", path);
  return level;
}

void LogError(const char* aFormat, ...) noexcept {
  if (!IsLogged(LogLevel::kError)) return;
  va_list arguments;
  va_start(arguments, aFormat);
  Write(LogLevel::kError, aFormat, arguments);
  va_end(arguments);
}

void LogWarning(const char* aFormat, ...) noexcept {
  if (!IsLogged(LogLevel::kWarning)) return;
  va_list arguments;
  va_start(arguments, aFormat);
  Write(LogLevel::kWarning, aFormat, arguments);
  va_end(arguments);
}

void LogInfo(const char* aFormat, ...) noexcept {
  if (!IsLogged(LogLevel::kInfo)) return;
  va_list arguments;
  va_start(arguments, aFormat);
  Write(LogLevel::kInfo, aFormat, arguments);
  va_end(arguments);
}

void LogDebug(const char* aFormat, ...) noexcept {
  if (!IsLogged(LogLevel::kDebug)) return;
  va_list arguments;
  va_start(arguments, aFormat);
  Write(LogLevel::kDebug, aFormat, arguments);
  va_end(arguments);
}

unsigned SetLogContext(unsigned aNumber) noexcept { return std::exchange(t_uContext, aNumber); }

void EndLog() noexcept {
  if (g_pfnSink.load(std::memory_order_acquire) != nullptr) return;
  g_LogLevel = LogLevel::kUnread;
  CloseLogFile();
}

void SetLogSink(LogLevel aLevel, LogSink aSink) noexcept {
  g_pfnSink = aSink;
  g_LogLevel = aLevel;
}
