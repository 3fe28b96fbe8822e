// ListCheck: uses GL to verify that a run of a list does only what its record contains. Draw thread, with GL
// current, outside of a selection.
//
// The canvas does not see GL calls that a host makes between its operations. The check draws the run in
// selection mode. Each of the six half-spaces around its box is the pick volume once. Matrices, stacks, names
// and hit state are compared before and after.
//
// The check does not detect: a host's call of a display list that changes later; clip planes, culling and a
// projection that a host sets and restores within one run; state that does not decide about hits.

#pragma once

#include <array>

struct ListRun;

class ListCheck {
 public:
  static constexpr int kDrawings = 6;  ///< number of times that a check draws a run

  /// Saves the GL state that the check changes.
  ListCheck() noexcept;
  /// Restores that state.
  ~ListCheck();
  ListCheck(const ListCheck&) = delete;
  ListCheck& operator=(const ListCheck&) = delete;

  /// Checks one run.
  /// @param aAfter names and state after the run
  /// @return whether the run draws only inside its box and has only the recorded effects
  bool Passes(const ListRun& aRun, const ListRun& aAfter) noexcept;

 private:
  std::array<int, 5> m_anDepths{};  // depths of the matrix, attribute and name stacks
};
