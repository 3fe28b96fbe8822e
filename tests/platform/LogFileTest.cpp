// Output of the log: levels, file, stderr and line format. No display.

#include <fcntl.h>
#include <unistd.h>

#include "platform/Log.h"
#include "support/TestFolder.h"

namespace {

/// Sets the environment variables of the log. The next log line reads them.
class LogStart {
 public:
  LogStart(const char* aLevel, const std::string& aFile = "") {
    setenv("GLLIB_LOG", aLevel, 1);
    setenv("GLLIB_LOG_FILE", aFile.c_str(), 1);
    EndLog();
  }
  ~LogStart() {
    unsetenv("GLLIB_LOG");
    unsetenv("GLLIB_LOG_FILE");
    EndLog();
  }
};

/// Redirects stderr to a pipe until the object is destroyed.
class ErrorPipe {
 public:
  ErrorPipe() : m_iBefore(dup(STDERR_FILENO)) {
    EXPECT_EQ(pipe2(m_aiEnds.data(), O_NONBLOCK | O_CLOEXEC), 0);
    dup2(m_aiEnds[1], STDERR_FILENO);
    close(m_aiEnds[1]);
  }
  ~ErrorPipe() {
    dup2(m_iBefore, STDERR_FILENO);
    close(m_iBefore);
    Close();
  }
  void Close() {
    if (m_aiEnds[0] >= 0) close(std::exchange(m_aiEnds[0], -1));
  }
  std::string Read() const {
    std::string text;
    char part[4096];
    for (ssize_t count = 0; (count = read(m_aiEnds[0], part, sizeof(part))) > 0;)
      text.append(part, static_cast<std::size_t>(count));
    return text;
  }

 private:
  int m_iBefore;
  std::array<int, 2> m_aiEnds{-1, -1};
};

void WriteOneOfEach() {
  LogError("an %s", "error");
  LogWarning("a warning");
  LogInfo("an info");
  LogDebug("a debug line");
}

std::vector<std::string> LinesOf(const std::string& aText) {
  std::vector<std::string> lines;
  std::istringstream stream(aText);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace

TEST(LogLevels, IncludeMoreSevereMessages) {
  for (const auto& [level, count] :
       {std::pair{"", 0}, {"off", 0}, {"error", 1}, {"warning", 2}, {"info", 3}, {"debug", 4}, {"loud", 3}}) {
    const ErrorPipe errors;
    const LogStart log(level);
    WriteOneOfEach();
    const auto lines = LinesOf(errors.Read());
    EXPECT_EQ(std::ssize(lines), count) << level;
    if (std::string_view(level) == "loud") {  // counts as warning, and is reported
      EXPECT_NE(lines.at(0).find("GLLIB_LOG is \"loud\", which is not a level"), std::string::npos);
    }
  }
}

TEST(LogFile, KeepsLinesOfThreadsSeparate) {
  constexpr int kThreads = 8, kLines = 500;
  const TestFolder folder;
  folder.Put("log", std::string_view("before\n"));
  const ErrorPipe errors;
  const LogStart log("info", folder / "log");
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([i] {
      const LogContext context(static_cast<unsigned>(i + 1));
      const std::string text(static_cast<std::size_t>(i * 100), 'x');
      for (int line = 0; line < kLines; ++line) LogInfo("%d %s.", line, text.c_str());
    });
  }
  for (std::thread& thread : threads) thread.join();
  const auto lines = LinesOf(folder.Get("log"));
  ASSERT_EQ(lines.size(), 1u + kThreads * kLines);
  EXPECT_EQ(lines[0], "before") << "lines are appended to an existing file";
  for (std::size_t i = 1; i < lines.size(); ++i) {
    EXPECT_EQ(lines[i].rfind("gllib: info: context ", 0), 0u) << lines[i];
    EXPECT_EQ(std::count(lines[i].begin(), lines[i].end(), '.'), 1) << lines[i];
  }
  EXPECT_EQ(errors.Read(), "");
}

TEST(LogFile, FallsBackToStderr) {
  const ErrorPipe errors;
  const LogStart log("error", "/no-such-folder/log");
  WriteOneOfEach();
  EXPECT_EQ(LinesOf(errors.Read()).size(), 1u);
  const LogStart warning("warning", "/no-such-folder/log");
  WriteOneOfEach();
  EXPECT_NE(errors.Read().find("\"/no-such-folder/log\", cannot be opened"), std::string::npos);
}

TEST(LogFile, IsNotTheFileThatReplacesAClosedStderr) {
  const TestFolder folder;
  const ErrorPipe errors;  // restores stderr
  close(STDERR_FILENO);
  const LogStart log("debug");
  WriteOneOfEach();
  const int file = open((folder / "connection").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_EQ(file, STDERR_FILENO) << "the lowest free number, as for a connection to an X server";
  WriteOneOfEach();
  EXPECT_EQ(folder.Get("connection"), "");
}

TEST(LogLine, IsOneLineOfBoundedLength) {
  const ErrorPipe errors;
  const LogStart log("error");
  LogError("a\nb\tc %s", std::string(5000, 'y').c_str());
  const auto lines = LinesOf(errors.Read());
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_NE(lines[0].find("a?b?c yyy"), std::string::npos);
  EXPECT_LE(lines[0].size(), 1024u);
}

TEST(LogPipe, WithoutAReaderBlocksNoThread) {
  ErrorPipe errors;
  fcntl(STDERR_FILENO, F_SETFL, 0);  // a write to a full pipe would wait
  const LogStart log("error");
  for (int line = 0; line < 5000; ++line) LogError("%s", std::string(200, 'z').c_str());
  const std::size_t taken = LinesOf(errors.Read()).size();
  EXPECT_LT(taken, 5000u);
  LogError("after");
  const auto lines = LinesOf(errors.Read());
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_NE(lines[0].find(std::to_string(5000 - taken) + " log lines are lost"), std::string::npos);
  errors.Close();
  LogError("without a reader");  // no SIGPIPE
}
