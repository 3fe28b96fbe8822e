// The process of a host: exits at each stage of a context's life, forks, signals, and the loss of the X
// server. Each host runs in a separate process. GLLIB_PROCESS_REPEATS sets the number of repetitions.

#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/ForeignWindow.h"

namespace {

/// A program that a test runs, communicates with and waits for.
class Child {
 public:
  Child(const char* aProgram, const char* aArgument) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return;
    m_Process = fork();
    if (m_Process == 0) {
      dup2(ends[1], 0);
      dup2(ends[1], 1);
      execl(aProgram, aProgram, aArgument, nullptr);
      _exit(127);
    }
    close(ends[1]);
    m_iSocket = ends[0];
  }
  ~Child() {
    if (m_Process > 0) {
      kill(m_Process, SIGKILL);
      waitpid(m_Process, nullptr, 0);
    }
    close(m_iSocket);
  }
  /// Waits for a line of the child. @return false if it ends without one
  bool AwaitLine() {
    char c = 0;
    while (read(m_iSocket, &c, 1) == 1 && c != '\n') {
    }
    return c == '\n';
  }
  /// Ends the child's wait for a line.
  void Tell(const std::string& aLine = "go") const {
    const std::string line = aLine + "\n";
    (void)!write(m_iSocket, line.data(), line.size());
  }
  /// Waits for the child to end. @return "exit 7", "signal 11" or "hangs"
  std::string End() {
    int status = 0;
    if (!Eventually([&] { return waitpid(m_Process, &status, WNOHANG) != 0; })) return "hangs";
    m_Process = -1;
    return WIFEXITED(status) ? "exit " + std::to_string(WEXITSTATUS(status))
                             : "signal " + std::to_string(WTERMSIG(status));
  }

 private:
  pid_t m_Process = -1;
  int m_iSocket = -1;
};

const char* const kStages[] = {"created", "initialised", "drawing", "capturing", "selecting",
                               "fonts",   "ending",      "painter", "joining"};

int Repeats() {
  const char* text = std::getenv("GLLIB_PROCESS_REPEATS");
  return text != nullptr ? std::max(1, std::atoi(text)) : GLLIB_SANITIZED ? 2 : 5;
}

void ExpectIntendedExits(const char* aWay, int aTimes) {
  for (int i = 0; i < aTimes; ++i) {
    Child host(GLLIB_HOST_FILE, aWay);
    EXPECT_TRUE(host.AwaitLine()) << aWay;
    ASSERT_EQ(host.End(), "exit 7") << aWay << ", run " << i;
  }
}

// Not with the thread sanitizer: in a child, the driver's exit handler joins a thread that does not exist
// there. The sanitizer's join then waits for ever.
void ExpectForks() {
#ifndef __SANITIZE_THREAD__
  for (const char* way : {"forks", "child-draws"}) ExpectIntendedExits(way, 1);
#endif
}

}  // namespace

TEST(ProcessHeadless, ExitsAtEachStageWithItsCode) {
  setenv("GLLIB_DISPLAY", "headless", 1);
  for (const char* stage : kStages) ExpectIntendedExits(stage, Repeats());
}

TEST(ProcessHeadless, SurvivesForksSignalsAndUseOfEgl) {
  setenv("GLLIB_DISPLAY", "headless", 1);
  ExpectForks();
  for (const char* way : {"signals", "eglterminate"}) ExpectIntendedExits(way, 1);
}

TEST(ProcessX11, ExitsAtEachStageWithItsCode) {
  const XServer server;
  for (const char* stage : kStages) ExpectIntendedExits(stage, Repeats());
}

TEST(ProcessX11, SurvivesForksAndSignals) {
  const XServer server;
  ExpectForks();
  ExpectIntendedExits("signals", 1);
}

TEST(ProcessX11, SurvivesTheEndOfItsServer) {
  for (int i = 0; i < 2 * Repeats(); ++i) {
    XServer server;
    Child host(GLLIB_HOST_FILE, "loses-server");
    ASSERT_TRUE(host.AwaitLine());
    server.End(i % 2 == 0 ? SIGKILL : SIGTERM);
    host.Tell();
    ASSERT_EQ(host.End(), "exit 7") << "run " << i;
  }
}

TEST(ProcessX11, UsesARestartedServer) {
  auto server = std::make_unique<XServer>();
  Child host(GLLIB_HOST_FILE, "outage");
  ASSERT_TRUE(host.AwaitLine());
  server->Kill();
  host.Tell();
  ASSERT_TRUE(host.AwaitLine()) << "draws headless without a server";
  server = std::make_unique<XServer>();
  const ForeignWindow parent(200, 150);
  host.Tell(std::string(std::getenv("DISPLAY")).append(1, ' ').append(std::to_string(parent.Xid())));
  EXPECT_TRUE(host.AwaitLine());
  EXPECT_EQ(host.End(), "exit 7");
}

TEST(ProcessX11, ExitsWhileTheServerIsFrozen) {
  XServer server;
  Child host(GLLIB_HOST_FILE, "until-requested");
  ASSERT_TRUE(host.AwaitLine());
  server.Signal(SIGSTOP);
  host.Tell();
  EXPECT_EQ(host.End(), "exit 7");
  server.Signal(SIGCONT);
}

#if !GLLIB_SANITIZED
TEST(ProcessX11, ReloadsTheModule) {
  const XServer server;
  Child host(GLLIB_RELOAD_FILE, "--gtest_brief=1");
  EXPECT_EQ(host.End(), "exit 0");
}
#endif
