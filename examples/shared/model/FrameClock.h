// FrameClock: measures how long a frame draws the model, from the first viewer to the end of the last one.
// The draw thread starts and stops it; the host's thread reads it.

#pragma once

#include <atomic>
#include <chrono>

class FrameClock {
 public:
  /// Starts the clock unless it is running.
  void Start() {
    if (!m_running) m_start = Clock::now();
    m_running = true;
  }
  void Stop() {
    if (m_running) m_milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - m_start).count();
    m_running = false;
  }
  /// Returns the duration of the last frame in milliseconds.
  double Milliseconds() const { return m_milliseconds; }

 private:
  using Clock = std::chrono::steady_clock;
  bool m_running = false;
  Clock::time_point m_start;
  std::atomic<double> m_milliseconds{0};
};
