// Child: a process with pipes at its input and output.

#include "process/Child.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>
#include <vector>

Child::Child(std::initializer_list<std::string> aCommand) {
  std::vector<std::string> words(aCommand);
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  int input[2], output[2];
  if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) return;
  m_Line = std::chrono::steady_clock::now();
  m_Process = fork();
  if (m_Process == 0) {
    dup2(input[0], 0);
    dup2(output[1], 1);
    execv(arguments[0], arguments.data());
    _exit(127);
  }
  close(input[0]);
  close(output[1]);
  m_iInput = input[1];
  m_iOutput = output[0];
}

Child::~Child() {
  if (m_Process > 0) {
    kill(m_Process, SIGKILL);
    waitpid(m_Process, nullptr, 0);
  }
  close(m_iInput);
  close(m_iOutput);
}

bool Child::AwaitLine() {
  char c = 0;
  while (read(m_iOutput, &c, 1) == 1 && c != '\n') {
  }
  m_Line = std::chrono::steady_clock::now();
  return c == '\n';
}

void Child::Tell(const std::string& aLine) const {
  const std::string line = aLine + "\n";
  (void)!write(m_iInput, line.data(), line.size());
}

std::string Child::End() {
  int status = 0;
  const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (waitpid(m_Process, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() > latest) return "hangs";  // the destructor ends it
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  m_Process = -1;
  m_ExitTime =
      std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - m_Line);
  if (WIFEXITED(status)) return "exit " + std::to_string(WEXITSTATUS(status));
  return "signal " + std::to_string(WTERMSIG(status));
}
