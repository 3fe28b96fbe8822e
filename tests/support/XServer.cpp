// XServer: an X server of a test (Xvfb). One test thread.

#include "support/XServer.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

XServer::XServer(const char* aScreen) {
  int pipeEnds[2];
  if (pipe(pipeEnds) != 0) return;
  m_Process = fork();
  if (m_Process == 0) {
    close(pipeEnds[0]);
    const std::string descriptor = std::to_string(pipeEnds[1]);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, 2);
    // No reset when the last client disconnects: a later client would meet a server that restarts.
    execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", aScreen, "-nolisten", "tcp",
           "-noreset", static_cast<char*>(nullptr));
    _exit(127);
  }
  close(pipeEnds[1]);
  for (char c = 0; read(pipeEnds[0], &c, 1) == 1 && c != '\n';) m_Display += c;
  close(pipeEnds[0]);
  if (m_Display == ":") {
    Kill();
  } else {
    setenv("DISPLAY", m_Display.c_str(), 1);
    setenv("GLLIB_DISPLAY", "x11", 1);
  }
}

XServer::~XServer() { Kill(); }

void XServer::Kill() { End(SIGKILL); }

void XServer::Signal(int aSignal) const { kill(m_Process, aSignal); }

void XServer::End(int aSignal) {
  if (m_Process <= 0) return;
  Signal(aSignal);
  waitpid(m_Process, nullptr, 0);
  m_Process = -1;
}
