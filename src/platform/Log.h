// Log: messages for the developers of hosts. Any thread, with any lock held.
// GLLIB_LOG=error|warning|info|debug enables it. A message never changes the result of an operation.

#pragma once

#include <atomic>
#include <cstddef>

enum class LogLevel { kUnread = -1, kOff, kError, kWarning, kInfo, kDebug };

/// kUnread until the level is first needed.
extern std::atomic<LogLevel> g_LogLevel;

/// Reads GLLIB_LOG and opens the file named by GLLIB_LOG_FILE.
/// @return the level
LogLevel StartLog() noexcept;

/// Returns whether messages of a level are written. Costs one relaxed load.
inline bool IsLogged(LogLevel aLevel) noexcept {
  const LogLevel level = g_LogLevel.load(std::memory_order_relaxed);
  return aLevel <= (level != LogLevel::kUnread ? level : StartLog());
}

// Each writes one line by a single write, with a printf format. Control characters become question marks. A
// line that cannot be written at once is dropped and counted: no thread waits for a reader of the log.
[[gnu::format(printf, 1, 2)]] void LogError(const char* aFormat, ...) noexcept;
[[gnu::format(printf, 1, 2)]] void LogWarning(const char* aFormat, ...) noexcept;
[[gnu::format(printf, 1, 2)]] void LogInfo(const char* aFormat, ...) noexcept;
[[gnu::format(printf, 1, 2)]] void LogDebug(const char* aFormat, ...) noexcept;

/// Sets the context number that the calling thread's lines contain; 0 for none.
/// @return the previous number
unsigned SetLogContext(unsigned aNumber) noexcept;

/// Sets the context number for a scope.
class LogContext {
 public:
  explicit LogContext(unsigned aNumber) noexcept : m_uBefore(SetLogContext(aNumber)) {}
  ~LogContext() { SetLogContext(m_uBefore); }
  LogContext(const LogContext&) = delete;
  LogContext& operator=(const LogContext&) = delete;

 private:
  const unsigned m_uBefore;
};

/// Closes the file. The next message reads the variables again.
void EndLog() noexcept;

using LogSink = void (*)(const char* aLine, std::size_t aLength);
/// Sends lines to a function instead of the log; null and kUnread restore the log. For tests.
void SetLogSink(LogLevel aLevel, LogSink aSink) noexcept;
