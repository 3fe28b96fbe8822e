// ReferenceCount: the reference count of one object. Reports the release of the last reference exactly once.
// Any thread.

#pragma once

#include <gllib/GLPlatform.h>

#include <atomic>
#include <limits>

/// After the last reference is released, the count is set far above 0. Code that runs during the object's end
/// may then add and release references without a second end.
class ReferenceCount {
 public:
  ULONG Raise() noexcept { return static_cast<ULONG>(++m_iCount); }

  /// Removes one reference.
  /// @param aIsLast receives whether the caller must end the object
  /// @return the number of remaining references
  ULONG Lower(bool* aIsLast) noexcept {
    LONG left = --m_iCount;
    const LONG shown = left;
    *aIsLast = left == 0 && m_iCount.compare_exchange_strong(left, kEnding);
    return static_cast<ULONG>(shown);
  }

  /// Prepares the end of an object whose lifetime another count controls.
  void End() noexcept { m_iCount = kEnding; }

 private:
  static constexpr LONG kEnding = std::numeric_limits<LONG>::max() / 2;

  std::atomic<LONG> m_iCount{0};
};
