// PClock: where a worker thread has its time from, and how it waits. A test scripts one.
// Any thread.

#pragma once

#include <gllib/GLPlatform.h>

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>

/// A millisecond clock and the waits that go by it.
class PClock {
 public:
  /// A wait without a limit.
  static constexpr DWORD kForever = 0xFFFFFFFF;

  /// The system's steady clock.
  static PClock& System() noexcept;

  /// Milliseconds from some fixed moment.
  virtual std::uint64_t Now() noexcept = 0;
  /// Waits until aEnd holds, looked at under aHold whenever aWake is notified, or aMilliseconds have passed.
  virtual void Wait(std::unique_lock<std::mutex>& aHold, std::condition_variable& aWake, DWORD aMilliseconds,
                    const std::function<bool()>& aEnd) = 0;

 protected:
  ~PClock() = default;
};
