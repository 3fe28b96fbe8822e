// PClock: the implementation on the system's steady clock. Any thread.

#include "thread/PClock.h"

#include <chrono>

namespace {

class SystemClock final : public PClock {
 public:
  std::uint64_t Now() noexcept override {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
  }

  void Wait(std::unique_lock<std::mutex>& aHold, std::condition_variable& aWake, DWORD aMilliseconds,
            const std::function<bool()>& aEnd) override {
    if (aMilliseconds == kForever) {
      aWake.wait(aHold, aEnd);
    } else {
      aWake.wait_for(aHold, std::chrono::milliseconds(aMilliseconds), aEnd);
    }
  }
};

}  // namespace

PClock& PClock::System() noexcept {
  static SystemClock clock;
  return clock;
}
