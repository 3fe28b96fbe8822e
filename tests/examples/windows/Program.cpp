// Program: implementation with operations of Windows. A process is identified by its handle.

#include "Program.h"

#include <windows.h>

#include <string>

namespace {

/// Returns the output of a program, with line ends of one character.
std::string Written(const TestFolder& aFolder, const char* aFile) {
  std::string text = aFolder.Get(aFile);
  std::erase(text, '\r');
  return text;
}

HANDLE CreateOutput(const std::string& aPath) {
  SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
  return CreateFileA(aPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr);
}

}  // namespace

pid_t Start(const std::vector<std::string>& aCommand, const std::string&, const std::string& aOutFile,
            const std::string& aErrFile) {
  std::string line;
  for (const std::string& text : aCommand) line += (line.empty() ? "\"" : " \"") + text + '"';
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = CreateOutput(aOutFile);
  startup.hStdError = CreateOutput(aErrFile);
  PROCESS_INFORMATION made{};
  const BOOL started =
      CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &made);
  CloseHandle(startup.hStdOutput);
  CloseHandle(startup.hStdError);
  if (started == FALSE) return -1;
  CloseHandle(made.hThread);
  return reinterpret_cast<pid_t>(made.hProcess);
}

int WaitFor(pid_t aProcess) {
  if (aProcess < 0) return -1;
  const auto process = reinterpret_cast<HANDLE>(aProcess);
  constexpr DWORD kTimeLimit = 60'000;
  DWORD status = static_cast<DWORD>(-1);
  if (WaitForSingleObject(process, kTimeLimit) == WAIT_OBJECT_0) {
    GetExitCodeProcess(process, &status);
  } else {
    TerminateProcess(process, status);
  }
  CloseHandle(process);
  return static_cast<int>(status);
}

Outcome RunProgram(const std::string& aExample, const std::vector<std::string>& aArguments) {
  const TestFolder folder;
  std::vector<std::string> command = {GLLIB_EXAMPLES_FOLDER "/" + aExample + ".exe"};
  command.insert(command.end(), aArguments.begin(), aArguments.end());
  const int status = WaitFor(Start(command, "", folder / "out", folder / "err"));
  return {status, Written(folder, "out"), Written(folder, "err")};
}
