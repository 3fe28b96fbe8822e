// Watchdog: ends the process, by the name of what it watches, when a step takes far too long. Its own thread
// looks.

#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

class Watchdog {
 public:
  explicit Watchdog(std::chrono::seconds aLongest) : m_Longest(aLongest), m_Thread([this] { Watch(); }) {}
  ~Watchdog() {
    {
      const std::scoped_lock lock(m_Lock);
      m_bEnds = true;
    }
    m_Changed.notify_all();
    m_Thread.join();
  }
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  /// The next step begins.
  void Begin(std::string aName) {
    const std::scoped_lock lock(m_Lock);
    m_Name = std::move(aName);
    ++m_iSteps;
  }

 private:
  void Watch() {
    std::unique_lock lock(m_Lock);
    while (!m_bEnds) {
      const int step = m_iSteps;
      m_Changed.wait_for(lock, m_Longest, [&] { return m_bEnds; });
      if (m_bEnds || step != m_iSteps) continue;
      std::fprintf(stderr, "hangs: %s\n", m_Name.c_str());
      std::abort();
    }
  }

  const std::chrono::seconds m_Longest;
  std::mutex m_Lock;
  std::condition_variable m_Changed;
  std::string m_Name;
  int m_iSteps = 0;
  bool m_bEnds = false;
  std::thread m_Thread;
};
