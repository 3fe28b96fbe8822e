// CompiledList: the parts of a display list that a canvas has compiled, with bounds. A selection draws only
// the parts that it can hit. Draw thread, with GL current, unless an operation documents otherwise.

#pragma once

#include <gllib/GLPlatform.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "view/lists/Box.h"
#include "view/lists/BoxTree.h"
#include "view/lists/HitState.h"

/// One part of a list, as a separate display list, and the state that the list has set before it.
struct ListRun {
  Box m_Box;                   ///< bounds of its vertices
  unsigned m_uList = 0;        ///< GL name of the part
  std::uint32_t m_uNames = 0;  ///< number of SetTestID calls of the list before the run
  ULONG m_uName = 0;           ///< identifier set by the last of them
  HitState m_State;            ///< state set before the run, after the last nested list
};

/// Consecutive runs without a nested list between them.
struct ListSegment {
  std::uint32_t m_uEnd = 0;  ///< index after its last run
  unsigned m_uCalled = 0;    ///< list called after the runs; 0 in the last segment
  ListRun m_After;           ///< names and state after the last run
};

class CompiledList {
 public:
  /// Draws a nested list by its name.
  class Caller {
   public:
    virtual void Call(unsigned aList) noexcept = 0;

   protected:
    ~Caller() = default;
  };

  /// A list with fewer vertices gets no bounds, because they would save too little.
  static constexpr std::uint32_t kFewestVertices = 64;

  explicit CompiledList(unsigned aList) noexcept : m_uList(aList) {}

  /// Returns the display list that draws everything: the host's list, or a list that calls the runs.
  unsigned Whole() const noexcept { return m_uWhole != 0 ? m_uWhole : m_uList; }
  /// Returns whether the bounds are known and all runs have passed the check.
  bool IsChecked() const noexcept { return m_Tree && m_uChecked == m_aRuns.size(); }
  bool IsBounded() const noexcept { return m_Tree.has_value(); }

  /// Draws the runs that the pick volume may touch. GL's selection finds the same as if all runs were drawn.
  /// Requires GL in selection mode and a checked list.
  /// @param aFound scratch memory; its contents are restored
  void DrawPicked(Caller& aCaller, std::vector<std::uint32_t>& aFound) const;

  /// Checks runs until about aVertices have been drawn; see ListCheck.h. If a run fails, the list loses its
  /// bounds.
  /// @return the part of aVertices that was not used
  std::uint64_t Check(std::uint64_t aVertices) noexcept;
  std::uint64_t Vertices() const noexcept { return m_uVertices; }

  /// Deletes the display lists of the runs, but not the host's list.
  void DeleteRuns() const noexcept;

  /// Returns the number of bytes that the bounds use.
  std::size_t Bytes() const noexcept;

 private:
  friend class ListRecorder;

  void Find(const class PickVolume& aVolume, std::vector<std::uint32_t>& aFound, std::size_t aBegin) const;
  void DrawSegment(const std::vector<std::uint32_t>& aFound, std::size_t aNext, std::uint32_t aFirst,
                   const ListSegment& aSegment) const noexcept;
  const ListRun& After(std::uint32_t aRun) const noexcept;
  void DropBounds() noexcept;
  void BuildTree() noexcept;

  const unsigned m_uList;
  unsigned m_uWhole = 0;
  std::uint32_t m_uChecked = 0;  // number of runs that have been checked, from the first one
  std::uint64_t m_uVertices = 0;
  std::size_t m_nFilled = 0;          // number of runs with vertices
  std::vector<unsigned> m_aOwnLists;  // display lists of the runs after the first, and m_uWhole
  std::vector<ListRun> m_aRuns;
  std::vector<ListSegment> m_aSegments;
  std::optional<BoxTree> m_Tree;
};
