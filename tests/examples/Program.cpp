#include "Program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>

extern char** environ;

pid_t Start(const std::vector<std::string>& aCommand, const std::string& aDisplay,
            const std::string& aOutFile, const std::string& aErrFile) {
  std::vector<std::string> texts = aCommand;
  std::vector<char*> arguments;
  for (auto& text : texts) arguments.push_back(text.data());
  arguments.push_back(nullptr);

  std::string display = "DISPLAY=" + aDisplay;
  std::vector<char*> environment;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const bool ours =
        std::strncmp(*entry, "DISPLAY=", 8) == 0 || std::strncmp(*entry, "GLLIB_DISPLAY=", 14) == 0;
    if (!ours) environment.push_back(*entry);
  }
  if (!aDisplay.empty()) environment.push_back(display.data());
  environment.push_back(nullptr);

  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC;
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, aOutFile.c_str(), kFlags, 0600);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, aErrFile.c_str(), kFlags, 0600);
  pid_t process = -1;
  if (posix_spawnp(&process, arguments[0], &files, nullptr, arguments.data(), environment.data()) != 0)
    process = -1;
  posix_spawn_file_actions_destroy(&files);
  return process;
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
