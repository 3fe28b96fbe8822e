// Program: processes of Linux. One test thread.

#include "Program.h"

#include <sys/wait.h>
#include <unistd.h>

pid_t Start(const std::vector<std::string>& aCommand, const std::string& aDisplay,
            const std::string& aOutFile, const std::string& aErrFile) {
  const pid_t process = fork();
  if (process != 0) return process;
  unsetenv("GLLIB_DISPLAY");
  unsetenv("DISPLAY");
  if (!aDisplay.empty()) setenv("DISPLAY", aDisplay.c_str(), 1);
  std::vector<char*> arguments;
  for (const std::string& text : aCommand) arguments.push_back(const_cast<char*>(text.c_str()));
  arguments.push_back(nullptr);
  if (freopen(aOutFile.c_str(), "w", stdout) != nullptr && freopen(aErrFile.c_str(), "w", stderr) != nullptr)
    execvp(arguments[0], arguments.data());
  _exit(127);
}

int WaitFor(pid_t aProcess) {
  int status = 0;
  if (aProcess < 0 || waitpid(aProcess, &status, 0) != aProcess || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

Outcome RunProgram(const std::string& aExample, const std::vector<std::string>& aArguments) {
  const TestFolder folder;
  std::vector<std::string> command = {GLLIB_EXAMPLES_FOLDER "/" + aExample};
  command.insert(command.end(), aArguments.begin(), aArguments.end());
  const int status = WaitFor(Start(command, "", folder / "out", folder / "err"));
  return {status, folder.Get("out"), folder.Get("err")};
}
