// LightNumbers: which of GL's eight light numbers are taken. One table for the process, all contexts share
// it. Any thread.

#pragma once

/// Numbers from 0 to 7, each with one holder at a time.
class LightNumbers {
 public:
  static constexpr int kNone = -1;

  /// Makes sure that aNumber, one holder's own, is a number: takes the lowest free one if it is kNone.
  /// @return what aNumber then holds: kNone when all are taken
  static int Take(int& aNumber) noexcept;
  /// Gives a number back, kNone included.
  static void Free(int& aNumber) noexcept;
};
