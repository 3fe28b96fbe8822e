// Log: messages for the author of a host. Any thread, with any lock held.
// GLLIB_LOG=error|warning|info|debug switches it on. A message never changes the result of an operation.

#pragma once

#include <atomic>
#include <cstddef>

enum class LogLevel { kUnread = -1, kOff, kError, kWarning, kInfo, kDebug };

/// kUnread until the first question.
extern std::atomic<LogLevel> g_LogLevel;

/// Reads GLLIB_LOG, and opens the file that GLLIB_LOG_FILE names. @return the level
LogLevel StartLog() noexcept;

/// Whether messages of a level are written. One relaxed load.
inline bool IsLogged(LogLevel aLevel) noexcept {
  const LogLevel level = g_LogLevel.load(std::memory_order_relaxed);
  return aLevel <= (level != LogLevel::kUnread ? level : StartLog());
}

// Write one line, in a single write. Formats as printf; control characters become question marks. A line that
// the log does not take at once is lost and counted: no thread waits for a reader of the log.
[[gnu::format(printf, 1, 2)]] void LogError(const char* aFormat, ...) noexcept;
[[gnu::format(printf, 1, 2)]] void LogWarning(const char* aFormat, ...) noexcept;
[[gnu::format(printf, 1, 2)]] void LogInfo(const char* aFormat, ...) noexcept;
[[gnu::format(printf, 1, 2)]] void LogDebug(const char* aFormat, ...) noexcept;

/// Names the context whose work the calling thread does, for the lines that it writes; 0 for none.
/// @return the number before
unsigned SetLogContext(unsigned aNumber) noexcept;

/// Names the context for the length of a scope.
class LogContext {
 public:
  explicit LogContext(unsigned aNumber) noexcept : m_uBefore(SetLogContext(aNumber)) {}
  ~LogContext() { SetLogContext(m_uBefore); }
  LogContext(const LogContext&) = delete;
  LogContext& operator=(const LogContext&) = delete;

 private:
  const unsigned m_uBefore;
};

/// Closes the file. The next question reads the variables again.
void EndLog() noexcept;

using LogSink = void (*)(const char* aLine, std::size_t aLength);
/// Sends lines to a function in place of the log; null and kUnread end this. For tests.
void SetLogSink(LogLevel aLevel, LogSink aSink) noexcept;
