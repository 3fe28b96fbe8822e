// PClock: clock and waits of a worker thread. Tests replace it with a scripted one. Any thread.

#pragma once

#include <gllib/GLPlatform.h>

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>

/// A clock in milliseconds, and waits whose time limits follow it.
class PClock {
 public:
  /// Time limit of a wait that has none.
  static constexpr DWORD kForever = 0xFFFFFFFF;

  /// Returns the system's steady clock.
  static PClock& System() noexcept;

  /// Returns the milliseconds since a fixed time.
  virtual std::uint64_t Now() noexcept = 0;
  /// Waits until aEnd returns true or aMilliseconds have passed. Calls aEnd with aHold locked, at the start
  /// and after each notification of aWake.
  virtual void Wait(std::unique_lock<std::mutex>& aHold, std::condition_variable& aWake, DWORD aMilliseconds,
                    const std::function<bool()>& aEnd) = 0;

 protected:
  ~PClock() = default;
};
