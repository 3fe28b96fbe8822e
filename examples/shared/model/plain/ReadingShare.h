// ReadingShare: reports the progress of reading a file at intervals. One thread.

#pragma once

#include <istream>

#include "shared/model/Model.h"

class ReadingShare {
 public:
  ReadingShare(std::istream& aFile, const ReadProgress& aTold) : m_file(aFile), m_told(aTold) {
    m_file.seekg(0, std::ios::end);
    m_size = m_file.tellg();
    m_file.seekg(0);
  }

  /// Returns the file's length in bytes.
  std::streamoff Size() const { return m_size; }

  /// Must be called for each line or facet.
  void Step() {
    constexpr unsigned kStepsATell = 4096;
    if (m_told && ++m_steps % kStepsATell == 0 && m_size > 0)
      m_told(static_cast<float>(m_file.tellg()) / static_cast<float>(m_size));
  }

 private:
  std::istream& m_file;
  const ReadProgress& m_told;
  std::streamoff m_size = 0;
  unsigned m_steps = 0;
};
