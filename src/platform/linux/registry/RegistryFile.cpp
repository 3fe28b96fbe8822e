// RegistryFile: reading and writing of the registry-script format ("Windows Registry Editor Version 5.00").

#include "platform/linux/registry/RegistryFile.h"

#include <fcntl.h>
#include <strings.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

namespace {

constexpr char kHeader[] = "Windows Registry Editor Version 5.00";
constexpr std::uintmax_t kLargestFile = 64u << 20;

std::string Quoted(const std::string& aText) {
  std::string result = "\"";
  for (const char c : aText) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result + '"';
}

/// Reads a quoted text from aPosition, which ends up behind it. @return nothing when it isn't closed
std::optional<std::string> ReadQuoted(const std::string& aLine, std::size_t& aPosition) {
  if (aPosition >= aLine.size() || aLine[aPosition] != '"') return std::nullopt;
  std::string text;
  for (std::size_t i = aPosition + 1; i < aLine.size(); ++i) {
    if (aLine[i] == '"') {
      aPosition = i + 1;
      return text;
    }
    if (aLine[i] == '\\' && ++i == aLine.size()) break;
    text += aLine[i];
  }
  return std::nullopt;
}

std::vector<BYTE> BytesOf(const std::string& aText) {
  return {aText.c_str(), aText.c_str() + aText.size() + 1};
}

std::optional<DWORD> ReadHex(const std::string& aText) {
  if (aText.empty() || aText.size() > 8) return std::nullopt;
  DWORD value = 0;
  for (const char c : aText) {
    const int digit = c >= '0' && c <= '9'   ? c - '0'
                      : c >= 'a' && c <= 'f' ? c - 'a' + 10
                      : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                             : -1;
    if (digit < 0) return std::nullopt;
    value = value * 16 + static_cast<DWORD>(digit);
  }
  return value;
}

/// Reads bytes in hexadecimal, separated by commas.
std::optional<std::vector<BYTE>> ReadBytes(const std::string& aText) {
  std::vector<BYTE> bytes;
  std::string digits;
  std::istringstream in(aText);
  while (std::getline(in, digits, ',')) {
    std::erase_if(digits, [](char c) { return c == ' ' || c == '\t'; });
    const auto byte = ReadHex(digits);
    if (!byte || *byte > 0xFF) return std::nullopt;
    bytes.push_back(static_cast<BYTE>(*byte));
  }
  return bytes;
}

std::string TextOf(const std::string& aName, const RegistryValue& aValue) {
  if (!aValue.m_szLine.empty()) return aValue.m_szLine;
  const std::string head = (aName.empty() ? "@" : Quoted(aName)) + "=";
  if (aValue.m_dwType == REG_DWORD && aValue.m_vData.size() == sizeof(DWORD)) {
    DWORD number = 0;
    std::memcpy(&number, aValue.m_vData.data(), sizeof(number));
    char digits[16] = {};
    std::snprintf(digits, sizeof(digits), "dword:%08x", static_cast<unsigned>(number));
    return head + digits;
  }
  if (aValue.m_dwType == REG_SZ) {
    const auto& data = aValue.m_vData;
    return head + Quoted(std::string(data.begin(), std::find(data.begin(), data.end(), BYTE{0})));
  }
  char type[16] = "hex:";
  if (aValue.m_dwType != REG_BINARY)
    std::snprintf(type, sizeof(type), "hex(%x):", static_cast<unsigned>(aValue.m_dwType));
  std::string text = head + type;
  for (std::size_t i = 0; i < aValue.m_vData.size(); ++i) {
    char digits[8] = {};
    std::snprintf(digits, sizeof(digits), i == 0 ? "%02x" : ",%02x", aValue.m_vData[i]);
    text += digits;
  }
  return text;
}

/// Writes a file of its own, down to the disk: a crash after its renaming must not leave it empty.
LSTATUS WriteFile(const std::string& aPath, const std::string& aText) {
  std::ofstream out(aPath, std::ios::binary | std::ios::trunc);
  if (!out) return ERROR_ACCESS_DENIED;
  out << aText;
  out.close();
  if (!out) return ERROR_WRITE_FAULT;
  const int file = open(aPath.c_str(), O_RDONLY | O_CLOEXEC);
  const bool isOnDisk = file >= 0 && fsync(file) == 0;
  if (file >= 0) close(file);
  return isOnDisk ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
}

}  // namespace

bool LessWithoutCase::operator()(const std::string& a, const std::string& b) const noexcept {
  return strcasecmp(a.c_str(), b.c_str()) < 0;
}

LSTATUS RegistryFile::Load(const std::string& aPath) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(aPath, error);
  if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory)
    return ERROR_SUCCESS;
  if (error || size > kLargestFile)
    return error == std::errc::permission_denied ? ERROR_ACCESS_DENIED : ERROR_BADDB;
  std::ifstream in(aPath, std::ios::binary);
  if (!in) return ERROR_ACCESS_DENIED;
  std::ostringstream text;
  text << in.rdbuf();
  if (text.bad()) return ERROR_BADDB;  // part of a file must not pass for all of it
  return size == 0 || Parse(text.str()) ? ERROR_SUCCESS : ERROR_BADDB;
}

bool RegistryFile::Parse(const std::string& aText) {
  std::istringstream in(aText);
  std::string line, whole, above;
  RegistryKey* key = nullptr;
  bool header = false;
  while (std::getline(in, line)) {
    line.erase(line.find_last_not_of(" \t\r") + 1);
    const std::size_t first = line.find_first_not_of(" \t");
    if (whole.empty() && (first == std::string::npos || line[first] == ';')) {
      if (first != std::string::npos) above += line + "\r\n";
      continue;
    }
    if (line.ends_with('\\')) {  // goes on in the next line
      whole += line.substr(0, line.size() - 1);
      continue;
    }
    line = std::exchange(whole, std::string()) + line;
    line.erase(0, line.find_first_not_of(" \t"));
    if (line.empty()) return false;  // a line that goes on has to be one
    if (!header) {
      if (line != kHeader) return false;
      header = true;
    } else if (line.front() == '[') {
      if (line.back() != ']') return false;
      key = &Make(line.substr(1, line.size() - 2));
      key->m_szAbove += std::exchange(above, std::string());
    } else if (key == nullptr || !ParseValue(line, *key, std::exchange(above, std::string()))) {
      return false;
    }
  }
  m_szBelow = above;
  return header && whole.empty();
}

bool RegistryFile::ParseValue(const std::string& aLine, RegistryKey& aKey, std::string aAbove) {
  std::size_t position = 0;
  std::string name;
  if (aLine.front() == '@') {
    position = 1;
  } else if (auto quoted = ReadQuoted(aLine, position)) {
    name = *quoted;
  } else {
    return false;
  }
  if (position >= aLine.size() || aLine[position] != '=') return false;
  ++position;
  RegistryValue value;
  value.m_szLine = aLine;
  value.m_szAbove = std::move(aAbove);
  if (position < aLine.size() && aLine[position] == '"') {
    const auto text = ReadQuoted(aLine, position);
    if (!text) return false;
    value.m_vData = BytesOf(*text);
  } else if (aLine.compare(position, 6, "dword:") == 0) {
    const auto number = ReadHex(aLine.substr(position + 6));
    if (!number) return false;
    value.m_dwType = REG_DWORD;
    value.m_vData.resize(sizeof(DWORD));
    std::memcpy(value.m_vData.data(), &*number, sizeof(DWORD));
  } else if (aLine.compare(position, 4, "hex:") == 0) {
    auto bytes = ReadBytes(aLine.substr(position + 4));
    if (!bytes) return false;
    value.m_dwType = REG_BINARY;
    value.m_vData = std::move(*bytes);
  } else {
    value.m_dwType = REG_NONE;  // other types are kept, not read
  }
  aKey.m_Values[name] = std::move(value);
  return true;
}

std::string RegistryFile::Text() const {
  std::string text = std::string(kHeader) + "\r\n";
  for (const auto& [path, key] : m_Keys) {
    text += "\r\n" + key.m_szAbove + '[' + key.m_szName + "]\r\n";
    for (const auto& [name, value] : key.m_Values) text += value.m_szAbove + TextOf(name, value) + "\r\n";
  }
  if (!m_szBelow.empty()) text += "\r\n" + m_szBelow;
  return text;
}

LSTATUS RegistryFile::Save(const std::string& aPath) const {
  std::error_code ignored;
  std::filesystem::path target = std::filesystem::canonical(aPath, ignored);
  if (ignored) target = aPath;  // not there yet
  const std::string beside = target.string() + "." + std::to_string(getpid()) + ".new";
  LSTATUS status = WriteFile(beside, Text());
  if (status == ERROR_SUCCESS) {
    if (const auto old = std::filesystem::status(target, ignored); std::filesystem::exists(old))
      std::filesystem::permissions(beside, old.permissions(), ignored);
    if (std::rename(beside.c_str(), target.c_str()) == 0) return ERROR_SUCCESS;
    status = ERROR_ACCESS_DENIED;
  }
  std::filesystem::remove(beside, ignored);
  return status;
}

RegistryKey* RegistryFile::Find(const std::string& aPath) {
  const auto found = m_Keys.find(aPath);
  if (found != m_Keys.end()) return &found->second;
  // A key stands as soon as one below it does.
  const std::string below = aPath + "\\";
  const auto child = m_Keys.lower_bound(below);
  if (child == m_Keys.end() || strncasecmp(child->first.c_str(), below.c_str(), below.size()) != 0)
    return nullptr;
  return &Make(aPath);
}

RegistryKey& RegistryFile::Make(const std::string& aPath) {
  RegistryKey& key = m_Keys[aPath];
  if (key.m_szName.empty()) key.m_szName = aPath;
  return key;
}

bool RegistryFile::Remove(const std::string& aPath) {
  const std::string below = aPath + "\\";
  return std::erase_if(m_Keys, [&](const auto& entry) {
           return strcasecmp(entry.first.c_str(), aPath.c_str()) == 0 ||
                  strncasecmp(entry.first.c_str(), below.c_str(), below.size()) == 0;
         }) != 0;
}
