// LightNumbers: allocates GL's eight light numbers. All contexts of the process share them. Any thread.

#pragma once

/// Numbers from 0 to 7, each with at most one holder.
class LightNumbers {
 public:
  static constexpr int kNone = -1;

  /// Takes the lowest free number if aNumber is kNone.
  /// @return the number that aNumber holds; kNone if all are taken
  static int Take(int& aNumber) noexcept;
  /// Frees a number and sets it to kNone. Accepts kNone.
  static void Free(int& aNumber) noexcept;
};
