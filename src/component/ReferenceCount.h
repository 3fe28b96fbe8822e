// ReferenceCount: the count of one object, whose last reference goes exactly once. Any thread.

#pragma once

#include <gllib/GLPlatform.h>

#include <atomic>
#include <limits>

/// Once the last reference has gone, the count stays far above 0: what the object's end calls may count it up
/// and down again without a second end.
class ReferenceCount {
 public:
  ULONG Raise() noexcept { return static_cast<ULONG>(++m_iCount); }

  /// @param aIsLast receives whether the caller must now end the object
  /// @return the references that are left
  ULONG Lower(bool* aIsLast) noexcept {
    LONG left = --m_iCount;
    const LONG shown = left;
    *aIsLast = left == 0 && m_iCount.compare_exchange_strong(left, kEnding);
    return static_cast<ULONG>(shown);
  }

  /// The end of an object whose life another count decided.
  void End() noexcept { m_iCount = kEnding; }

 private:
  static constexpr LONG kEnding = std::numeric_limits<LONG>::max() / 2;

  std::atomic<LONG> m_iCount{0};
};
