// CompiledList: the parts of a display list that a canvas has compiled, with bounds, so that a selection
// draws only the parts that it can hit. Draw thread, with GL current, unless an operation says otherwise.

#pragma once

#include <gllib/GLPlatform.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "view/lists/Box.h"
#include "view/lists/BoxTree.h"
#include "view/lists/HitState.h"

/// One part of a list: a display list of its own, and what the list has set before it.
struct ListRun {
  Box m_Box;                   ///< of its vertices
  unsigned m_uList = 0;        ///< GL's name of the part
  std::uint32_t m_uNames = 0;  ///< number of SetTestID calls of the list before the run
  ULONG m_uName = 0;           ///< identifier of the last of them
  bool m_bCulls = false;       ///< whether the run itself enables culling
  HitState m_State;            ///< what the list has set before the run, since the last nested list
};

/// Consecutive runs with no nested list between them.
struct ListSegment {
  std::uint32_t m_uEnd = 0;  ///< index after its last run
  unsigned m_uCalled = 0;    ///< list that is called after the runs; 0 after the last segment
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

  /// A list with fewer has no bounds: it is drawn in less time than they save.
  static constexpr std::uint32_t kFewestVertices = 64;

  explicit CompiledList(unsigned aList) noexcept : m_uList(aList) {}

  /// The display list that draws all: the host's own, or one that calls the runs.
  unsigned Whole() const noexcept { return m_uWhole != 0 ? m_uWhole : m_uList; }
  /// Whether the bounds are known and a check found nothing that they do not cover.
  bool IsChecked() const noexcept { return m_Tree && m_uChecked == m_aRuns.size(); }
  bool IsBounded() const noexcept { return m_Tree.has_value(); }

  /// Draws the runs that the pick volume may touch, with the effects that all runs would have on what GL's
  /// selection finds. GL in selection mode; the list is checked.
  /// @param aFound scratch, returned as it was
  void DrawPicked(Caller& aCaller, std::vector<std::uint32_t>& aFound) const;

  /// Checks runs until aVertices have been drawn; see ListCheck.h. aHeight is that of the surface. A list
  /// with a run that fails has no bounds from then on. @return the vertices that are left of aVertices
  std::uint64_t Check(std::uint64_t aVertices, int aHeight) noexcept;
  std::uint64_t Vertices() const noexcept { return m_uVertices; }

  /// Deletes the runs in GL, but not the host's list.
  void DeleteRuns() const noexcept;

  /// Bytes that the bounds use.
  std::size_t Bytes() const noexcept;

 private:
  friend class ListRecorder;  // fills it

  void Find(const class PickVolume& aVolume, std::vector<std::uint32_t>& aFound, std::size_t aBegin) const;
  void DrawSegment(const std::vector<std::uint32_t>& aFound, std::size_t aNext, std::uint32_t aFirst,
                   const ListSegment& aSegment) const noexcept;
  const ListRun& After(std::uint32_t aRun) const noexcept;
  void DropBounds() noexcept;
  void BuildTree() noexcept;

  const unsigned m_uList;
  unsigned m_uWhole = 0;
  std::uint32_t m_uChecked = 0;  // runs that have been checked, from the first
  std::uint64_t m_uVertices = 0;
  std::size_t m_nFilled = 0;          // runs with vertices
  std::vector<unsigned> m_aOwnLists;  // runs after the first, and m_uWhole
  std::vector<ListRun> m_aRuns;
  std::vector<ListSegment> m_aSegments;
  std::optional<BoxTree> m_Tree;
};
