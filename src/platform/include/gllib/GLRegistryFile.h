/// @file
/// Reading of the registry files: their location, content and format, registry scripts ("Windows Registry
/// Editor Version 5.00"). The module and GLCreateObjectByProgID use only these functions. Not on Windows. No
/// state; any thread.

#pragma once

/// @cond parts of other headers, not for hosts

#ifndef _WIN32

#include <fcntl.h>
#include <gllib/GLPlatform.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace GLRegistration {

/// Returns whether the program is privileged (setuid, setgid, capabilities). The caller's environment must
/// not choose files for such a program.
inline bool IsPrivileged() noexcept { return getauxval(AT_SECURE) != 0; }

/// Returns the value of an environment variable; empty if it is not set, and always in a privileged program.
inline std::string Environment(const char* aName) {
  const char* value = secure_getenv(aName);
  return value != nullptr ? value : "";
}

/// Returns the path of the user's file; empty if no variable names a folder.
inline std::string UserFile() {
  if (const std::string own = Environment("GLLIB_REGISTRY_DIR"); !own.empty()) return own + "/user.reg";
  // A relative path would depend on the working directory, so it is ignored.
  if (const std::string xdg = Environment("XDG_CONFIG_HOME"); !xdg.empty() && xdg.front() == '/')
    return xdg + "/gllib/user.reg";
  const std::string home = Environment("HOME");
  return home.empty() ? home : home + "/.config/gllib/user.reg";
}

/// Returns the path of the machine's file, in the first folder of XDG_CONFIG_DIRS, which has precedence.
inline std::string MachineFile() {
  if (const std::string own = Environment("GLLIB_REGISTRY_DIR"); !own.empty()) return own + "/machine.reg";
  const std::string folders = Environment("XDG_CONFIG_DIRS");
  const std::string first = folders.substr(0, folders.find(':'));
  return (first.empty() || first.front() != '/' ? "/etc/xdg" : first) + "/gllib/machine.reg";
}

enum class FileState {
  kRead,
  kAbsent,
  kDenied,   ///< this program may not read it
  kFailed,   ///< a read error: the text is incomplete
  kDamaged,  ///< not a regular file, or too large for a registry
};

/// Reads a whole file. @param aText receives the bytes, for kRead only
inline FileState ReadFile(const std::string& aPath, std::string& aText) {
  constexpr std::size_t kLargest = std::size_t{64} << 20;
  struct Descriptor {
    ~Descriptor() {
      if (m_iFile >= 0) close(m_iFile);
    }
    int m_iFile;
  };
  aText.clear();
  // Without O_NONBLOCK, open waits for the writer of a pipe.
  const Descriptor file{open(aPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK)};
  if (file.m_iFile < 0) {
    return errno == ENOENT || errno == ENOTDIR ? FileState::kAbsent
           : errno == EACCES || errno == EPERM ? FileState::kDenied
                                               : FileState::kFailed;
  }
  struct stat status {};
  if (fstat(file.m_iFile, &status) != 0) return FileState::kFailed;
  if (!S_ISREG(status.st_mode)) return FileState::kDamaged;
  char piece[16384];
  for (;;) {
    const ssize_t count = read(file.m_iFile, piece, sizeof(piece));
    if (count == 0) return FileState::kRead;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return FileState::kFailed;
    if (aText.size() + static_cast<std::size_t>(count) > kLargest) return FileState::kDamaged;
    aText.append(piece, static_cast<std::size_t>(count));
  }
}

/// Types of registry values, by the Windows numbers.
inline constexpr DWORD kTypeOther = 0, kTypeText = 1, kTypeBinary = 3, kTypeNumber = 4;

/// A value: its type and its bytes; a text with its terminating zero. The bytes of other types are not read.
struct Value {
  DWORD m_dwType = kTypeOther;
  std::vector<std::uint8_t> m_vData;
};

inline constexpr std::string_view kScriptHeader = "Windows Registry Editor Version 5.00";

/// Parts of ReadScript.
namespace Script {

/// Removes the first line of a text and returns it.
inline std::string_view TakeLine(std::string_view& aText) noexcept {
  const std::size_t end = aText.find('\n');
  const std::string_view line = aText.substr(0, end);
  aText.remove_prefix(end == aText.npos ? aText.size() : end + 1);
  return line;
}

inline std::string_view WithoutBlanksBehind(std::string_view aLine) noexcept {
  return aLine.substr(0, aLine.find_last_not_of(" \t\r") + 1);
}

/// Reads a quoted text, where a backslash precedes each backslash and quote, and removes it from aLine.
/// @return nothing if it has no end
inline std::optional<std::string> TakeQuoted(std::string_view& aLine) {
  if (aLine.empty() || aLine.front() != '"') return std::nullopt;
  std::string text;
  for (std::size_t i = 1; i < aLine.size(); ++i) {
    if (aLine[i] == '"') {
      aLine.remove_prefix(i + 1);
      return text;
    }
    if (aLine[i] == '\\' && ++i == aLine.size()) break;
    text += aLine[i];
  }
  return std::nullopt;
}

inline bool TakeStart(std::string_view& aText, std::string_view aStart) noexcept {
  if (aText.substr(0, aStart.size()) != aStart) return false;
  aText.remove_prefix(aStart.size());
  return true;
}

inline int Digit(char c) noexcept {
  return c >= '0' && c <= '9'   ? c - '0'
         : c >= 'A' && c <= 'F' ? c - 'A' + 10
         : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                : -1;
}

inline std::optional<DWORD> ReadHex(std::string_view aText) noexcept {
  if (aText.empty() || aText.size() > 8) return std::nullopt;
  DWORD value = 0;
  for (const char c : aText) {
    if (Digit(c) < 0) return std::nullopt;
    value = value * 16 + static_cast<DWORD>(Digit(c));
  }
  return value;
}

/// Reads bytes in hexadecimal, separated by commas.
inline std::optional<std::vector<std::uint8_t>> ReadBytes(std::string_view aText) {
  std::vector<std::uint8_t> bytes;
  while (!aText.empty()) {
    const std::size_t comma = aText.find(',');
    std::string digits;
    for (const char c : aText.substr(0, comma)) {
      if (c != ' ' && c != '\t') digits += c;
    }
    aText.remove_prefix(comma == aText.npos ? aText.size() : comma + 1);
    const auto byte = ReadHex(digits);
    if (!byte || *byte > 0xFF) return std::nullopt;
    bytes.push_back(static_cast<std::uint8_t>(*byte));
  }
  return bytes;
}

/// Reads the part of a value after its name and the equals sign.
inline std::optional<Value> ReadValue(std::string_view aText) {
  if (!aText.empty() && aText.front() == '"') {
    const auto text = TakeQuoted(aText);
    if (!text) return std::nullopt;
    return Value{kTypeText, {text->c_str(), text->c_str() + text->size() + 1}};
  }
  if (TakeStart(aText, "dword:")) {
    const auto number = ReadHex(aText);
    if (!number) return std::nullopt;
    Value value{kTypeNumber, std::vector<std::uint8_t>(sizeof(DWORD))};
    std::memcpy(value.m_vData.data(), &*number, sizeof(DWORD));
    return value;
  }
  if (TakeStart(aText, "hex:")) {
    auto bytes = ReadBytes(aText);
    if (!bytes) return std::nullopt;
    return Value{kTypeBinary, std::move(*bytes)};
  }
  return Value{};
}

}  // namespace Script

/// Reads the text of a registry file and calls operations of aOut in the order of the text:
/// - aOut.Key(name, above): the key to which the next values belong
/// - aOut.Entry(name, value, line, above): a value and its line; an empty name is the key's default value
/// - aOut.End(below): the end of the text
///
/// The arguments above and below are the comments before the entry and at the end, with their line ends. A
/// key and a value can occur several times: the last value is valid.
/// @return false if the text is not a registry script; the caller then discards the earlier calls
template <class Out>
bool ReadScript(std::string_view aText, Out&& aOut) {
  std::string joined, above;  // the parts of a continued line; the comments since the last entry
  bool header = false, key = false;
  while (!aText.empty()) {
    std::string_view line = Script::WithoutBlanksBehind(Script::TakeLine(aText));
    const std::size_t first = line.find_first_not_of(" \t");
    if (joined.empty() && (first == line.npos || line[first] == ';')) {
      if (first != line.npos) above.append(line).append("\r\n");
      continue;
    }
    if (!line.empty() && line.back() == '\\') {
      joined += line.substr(0, line.size() - 1);
      continue;
    }
    const std::string whole = std::exchange(joined, std::string()).append(line);
    const std::size_t start = whole.find_first_not_of(" \t");
    if (start == whole.npos) return false;  // a continued line must not be empty
    const std::string_view entry = std::string_view(whole).substr(start);
    if (!header) {
      if (entry != kScriptHeader) return false;
      header = true;
    } else if (entry.front() == '[') {
      if (entry.back() != ']') return false;
      key = true;
      aOut.Key(entry.substr(1, entry.size() - 2), std::exchange(above, std::string()));
    } else {
      std::string_view rest = entry;
      const auto name = Script::TakeStart(rest, "@") ? std::string() : Script::TakeQuoted(rest);
      if (!key || !name || !Script::TakeStart(rest, "=")) return false;
      auto value = Script::ReadValue(rest);
      if (!value) return false;
      aOut.Entry(*name, std::move(*value), entry, std::exchange(above, std::string()));
    }
  }
  aOut.End(std::move(above));
  return header && joined.empty();
}

}  // namespace GLRegistration

#endif

/// @endcond
