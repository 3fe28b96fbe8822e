// ReadingShare: reports the progress of reading a file at intervals. One thread.

#pragma once

#include <istream>

#include "shared/model/Model.h"

class ReadingShare {
 public:
  ReadingShare(std::istream& aFile, const ReadProgress& aProgress) : m_file(aFile), m_progress(aProgress) {
    m_file.seekg(0, std::ios::end);
    m_size = m_file.tellg();
    m_file.seekg(0);
  }

  /// Returns the file's length in bytes.
  std::streamoff Size() const { return m_size; }

  /// Must be called for each line or facet.
  void Step() {
    constexpr unsigned kStepsPerReport = 4096;
    if (m_progress && ++m_steps % kStepsPerReport == 0 && m_size > 0)
      m_progress(static_cast<float>(m_file.tellg()) / static_cast<float>(m_size));
  }

 private:
  std::istream& m_file;
  const ReadProgress& m_progress;
  std::streamoff m_size = 0;
  unsigned m_steps = 0;
};
