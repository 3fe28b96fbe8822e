// FrameClock: how long frames take, from the first viewer's drawing to the end of the last one's.
// The draw thread starts and stops it, the host's thread reads.

#pragma once

#include <atomic>
#include <chrono>

class FrameClock {
 public:
  /// Starts, unless it is running already.
  void Start() {
    if (!m_running) m_start = Clock::now();
    m_running = true;
  }
  void Stop() {
    if (m_running) m_milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - m_start).count();
    m_running = false;
  }
  /// The length of the last frame.
  double Milliseconds() const { return m_milliseconds; }

 private:
  using Clock = std::chrono::steady_clock;
  bool m_running = false;
  Clock::time_point m_start;
  std::atomic<double> m_milliseconds{0};
};
