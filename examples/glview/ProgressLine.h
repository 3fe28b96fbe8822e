// ProgressLine: one line on the terminal with the progress of a long read. The line is erased at the end. One
// thread.

#pragma once

#include <unistd.h>

#include <chrono>
#include <cstdio>

class ProgressLine {
 public:
  ProgressLine() = default;
  ~ProgressLine() {
    if (m_shown) std::fprintf(stderr, "\r\033[K");
  }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// @param aShare from 0 to 1
  void Show(float aShare) {
    constexpr auto kPatience = std::chrono::milliseconds(300);
    const bool slow = std::chrono::steady_clock::now() - m_start > kPatience;
    const int percent = static_cast<int>(aShare * 100.0f);
    if (!m_terminal || !slow || percent == m_percent) return;
    std::fprintf(stderr, "\rReading %3d %%", percent);
    m_percent = percent;
    m_shown = true;
  }

 private:
  const bool m_terminal = isatty(STDERR_FILENO) == 1;
  const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
  bool m_shown = false;
  int m_percent = -1;
};
