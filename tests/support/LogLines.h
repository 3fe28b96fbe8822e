// LogLines: collects the lines of the log until it is destroyed. They are not written. One object at a time;
// any thread may write.

#pragma once

#include <regex>
#include <string_view>

#include "platform/Log.h"
#include "support/Test.h"

class LogLines {
 public:
  /// @param aLevel kUnread: the level of the environment
  explicit LogLines(LogLevel aLevel) {
    Take();
    SetLogSink(aLevel, Keep);
  }
  ~LogLines() { SetLogSink(LogLevel::kUnread, nullptr); }
  LogLines(LogLines&&) = delete;

  std::vector<std::string> All() const {
    const std::scoped_lock lock(g_Lock);
    return g_Lines;
  }
  /// Returns the number of lines that contain a text, of one level or of all.
  auto Count(std::string_view aText, const std::string& aLevel = "") const {
    const auto lines = All();
    return std::count_if(lines.begin(), lines.end(), [&](const std::string& aLine) {
      return aLine.starts_with("gllib: " + aLevel) && aLine.find(aText) != aLine.npos;
    });
  }
  /// Waits for a line that contains a text.
  bool Has(std::string_view aText) const {
    return Eventually([&] { return Count(aText) > 0; });
  }
  std::string Joined() const {
    std::string all;
    for (const std::string& line : All()) all += line;
    return all;
  }

 private:
  static void Keep(const char* aLine, std::size_t aLength) {
    const std::scoped_lock lock(g_Lock);
    g_Lines.emplace_back(aLine, aLength);
  }
  static void Take() {
    const std::scoped_lock lock(g_Lock);
    g_Lines.clear();
  }

  static inline std::mutex g_Lock;
  static inline std::vector<std::string> g_Lines;
};

/// The cause of a message, its level, and a part of its text.
struct LogCase {
  const char* m_szLevel;
  const char* m_szMessage;
  void (*m_pfnCause)();
};

/// Causes a message, which must appear once. Each line of the log must have its form.
inline void ExpectOnce(const LogCase& aCase) {
  SCOPED_TRACE(aCase.m_szMessage);
  const LogLines log(LogLevel::kDebug);
  aCase.m_pfnCause();
  const std::regex line("gllib: (error|warning|info|debug): (context [0-9]+, )?thread [0-9]+: [^\n]+\n");
  for (const std::string& text : log.All()) EXPECT_TRUE(std::regex_match(text, line)) << text;
  EXPECT_EQ(log.Count(aCase.m_szMessage, aCase.m_szLevel), 1) << log.Joined();
}
