// LineReader: the words of a text file, line by line. Errors contain the line number. One thread.

#pragma once

#include <algorithm>
#include <charconv>
#include <istream>
#include <string>
#include <string_view>

#include "shared/model/Model.h"

class LineReader {
 public:
  explicit LineReader(std::istream& aFile) : m_file(aFile) {}

  /// Reads the next line. A backslash at the end of a line appends the line after it. @return false at the
  /// end
  bool Next() {
    m_at = 0;
    m_line.clear();
    for (std::string piece; std::getline(m_file, piece);) {
      ++m_number;
      if (piece.ends_with('\r')) piece.pop_back();
      const bool continues = piece.ends_with('\\');
      if (continues) piece.back() = ' ';
      m_line += piece;
      if (!continues) return true;
    }
    return !m_line.empty();
  }

  /// Returns the next word of the line; empty at its end.
  std::string_view Word() {
    const auto start = std::min(m_line.find_first_not_of(" \t", m_at), m_line.size());
    m_at = std::min(m_line.find_first_of(" \t", start), m_line.size());
    return std::string_view(m_line).substr(start, m_at - start);
  }

  /// Returns the rest of the line, without blanks around it.
  std::string Rest() {
    const auto start = m_line.find_first_not_of(" \t", m_at);
    if (start == m_line.npos) return {};
    const auto last = m_line.find_last_not_of(" \t");
    return m_line.substr(start, last - start + 1);
  }

  /// Returns the next word as a number. @throws ModelError if it is not a number
  float Number() {
    const std::string_view word = Word();
    float value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc{} || end != word.data() + word.size()) Fail("not a number");
    return value;
  }

  /// @throws ModelError with the line's number
  [[noreturn]] void Fail(const std::string& aReason) const {
    throw ModelError(aReason + " in line " + std::to_string(m_number));
  }

 private:
  std::istream& m_file;
  std::string m_line;
  std::size_t m_at = 0, m_number = 0;
};
