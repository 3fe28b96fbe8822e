// ListCheck: finds by means of GL whether a run of a list does what its record says. Draw thread, with GL
// current, outside of a selection.
//
// A host may mix its own GL calls with those of the canvas, and the canvas does not see them. The check draws
// the run in selection mode with each of the six half-spaces around its box as the pick volume, and compares
// matrices, stacks, names and the state that decides about hits before and after.
//
// It cannot see: a host's call of a display list that changes later; clip planes, culling and a projection of
// its own that a host sets and restores within one run; state that does not decide about hits.

#pragma once

#include <array>

struct ListRun;

class ListCheck {
 public:
  static constexpr int kDrawings = 6;  ///< how often a check draws a run

  /// Saves GL's state.
  /// @param aHeight of the surface, in pixels
  explicit ListCheck(int aHeight) noexcept;
  /// Restores it.
  ~ListCheck();
  ListCheck(const ListCheck&) = delete;
  ListCheck& operator=(const ListCheck&) = delete;

  /// @param aAfter names and state after the run
  /// @return whether the run draws nothing outside its box and has no effects but those recorded
  bool Passes(const ListRun& aRun, const ListRun& aAfter) noexcept;

 private:
  int DrawAround(const ListRun& aRun, bool aNamed) noexcept;

  const int m_iHeight;
  std::array<int, 5> m_anDepths{};  // of the matrix and attribute stacks
};
