// LogOutput: a file, or the debugger. Any thread.

#include "platform/LogOutput.h"

#include <windows.h>

#include <atomic>

namespace {

constinit std::atomic<HANDLE> g_hFile{nullptr};

}  // namespace

// Reads the environment of the system: the C library's copy lacks changes by SetEnvironmentVariable.
void ReadLogVariable(const char* aName, char* aText, std::size_t aRoom) noexcept {
  const DWORD length = GetEnvironmentVariableA(aName, aText, static_cast<DWORD>(aRoom));

  if (length == 0 || length >= aRoom) aText[0] = '\0';
}

bool OpenLogFile(const char* aPath) noexcept {
  const HANDLE file =
      CreateFileA(aPath, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  HANDLE before = nullptr;
  if (!g_hFile.compare_exchange_strong(before, file)) CloseHandle(file);
  return true;
}

void CloseLogFile() noexcept {
  if (const HANDLE file = g_hFile.exchange(nullptr)) CloseHandle(file);
}

bool HasLogOutput() noexcept { return true; }

bool WriteLogLine(const char* aLine, std::size_t aLength) noexcept {
  const HANDLE file = g_hFile;
  if (file == nullptr) {
    OutputDebugStringA(aLine);
    return true;
  }
  DWORD written = 0;
  return WriteFile(file, aLine, static_cast<DWORD>(aLength), &written, nullptr) != FALSE &&
         written == aLength;
}
