// CompiledList: drawing for a selection, and the check of the bounds. Draw thread, with GL current.

#include "view/lists/CompiledList.h"

#include <algorithm>
#include <new>

#include "platform/GL.h"
#include "view/lists/ListCheck.h"
#include "view/lists/PickVolume.h"

namespace {

constexpr std::size_t kMostBytesPerTriangle = 4;

}  // namespace

void CompiledList::DrawPicked(Caller& aCaller, std::vector<std::uint32_t>& aFound) const {
  const std::size_t begin = aFound.size();
  aFound.reserve(begin + m_aRuns.size());
  PickVolume volume;
  Find(volume, aFound, begin);
  if (m_aSegments.size() == 1 && aFound.size() - begin == m_nFilled) {
    aFound.resize(begin);
    glCallList(Whole());
    return;
  }
  std::uint32_t first = 0;
  for (const ListSegment& segment : m_aSegments) {
    const auto next = static_cast<std::size_t>(
        std::lower_bound(aFound.begin() + static_cast<std::ptrdiff_t>(begin), aFound.end(), first) -
        aFound.begin());
    DrawSegment(aFound, next, first, segment);
    first = segment.m_uEnd;
    if (segment.m_uCalled == 0) continue;
    aCaller.Call(segment.m_uCalled);  // appends to aFound and restores its size
    // The nested list may have changed the matrices.
    if (const PickVolume after; !(after == volume)) {
      volume = after;
      aFound.resize(begin);
      Find(volume, aFound, begin);
    }
  }
  aFound.resize(begin);
}

// Appends the runs that the volume may touch, in drawing order. Does not allocate if the capacity suffices
// for all.
void CompiledList::Find(const PickVolume& aVolume, std::vector<std::uint32_t>& aFound,
                        std::size_t aBegin) const {
  m_Tree->Find(aVolume, aFound);
  const auto begin = aFound.begin() + static_cast<std::ptrdiff_t>(aBegin);
  const auto end = std::remove_if(begin, aFound.end(),
                                  [&](std::uint32_t aRun) { return !aVolume.MayTouch(m_aRuns[aRun].m_Box); });
  std::sort(begin, end);
  aFound.erase(end, aFound.end());
}

void CompiledList::DrawSegment(const std::vector<std::uint32_t>& aFound, std::size_t aNext,
                               std::uint32_t aFirst, const ListSegment& aSegment) const noexcept {
  std::uint32_t run = aFirst;  // index after the last run that was drawn
  std::uint32_t names = aFirst < m_aRuns.size() ? m_aRuns[aFirst].m_uNames : aSegment.m_After.m_uNames;
  // GL writes a record of earlier hits at each call of glLoadName, also with an unchanged name.
  const auto loadName = [&](const ListRun& aState) {
    if (names != aState.m_uNames) glLoadName(aState.m_uName);
  };
  for (; aNext < aFound.size() && aFound[aNext] < aSegment.m_uEnd; ++aNext) {
    const std::uint32_t found = aFound[aNext];
    if (found != run) m_aRuns[found].m_State.Apply();
    loadName(m_aRuns[found]);
    glCallList(m_aRuns[found].m_uList);
    run = found + 1;
    names = run < aSegment.m_uEnd ? m_aRuns[run].m_uNames : aSegment.m_After.m_uNames;
  }
  if (run == aSegment.m_uEnd) return;
  aSegment.m_After.m_State.Apply();
  loadName(aSegment.m_After);
}

// Returns names and state after a run, which are those before the next run of its segment.
const ListRun& CompiledList::After(std::uint32_t aRun) const noexcept {
  const auto segment = std::find_if(m_aSegments.begin(), m_aSegments.end(),
                                    [aRun](const ListSegment& s) { return aRun < s.m_uEnd; });
  return aRun + 1 < segment->m_uEnd ? m_aRuns[aRun + 1] : segment->m_After;
}

std::uint64_t CompiledList::Check(std::uint64_t aVertices) noexcept {
  const std::uint64_t each = ListCheck::kDrawings * (m_uVertices / m_aRuns.size() + 1);
  ListCheck check;
  while (IsBounded() && !IsChecked() && aVertices > 0) {
    if (!check.Passes(m_aRuns[m_uChecked], After(m_uChecked))) {
      DropBounds();
    } else {
      ++m_uChecked;
    }
    aVertices -= std::min(aVertices, each);
  }
  return aVertices;
}

void CompiledList::DeleteRuns() const noexcept {
  for (const unsigned list : m_aOwnLists) glDeleteLists(list, 1);
}

std::size_t CompiledList::Bytes() const noexcept {
  return sizeof(*this) + m_aOwnLists.capacity() * sizeof(unsigned) + m_aRuns.capacity() * sizeof(ListRun) +
         m_aSegments.capacity() * sizeof(ListSegment) + (m_Tree ? m_Tree->Bytes() : 0);
}

void CompiledList::DropBounds() noexcept {
  m_Tree.reset();
  m_aRuns = {};
  m_aSegments = {};
}

// The list is drawn whole if the tree cannot be allocated or would save too little.
void CompiledList::BuildTree() noexcept {
  try {
    if (m_uVertices >= kFewestVertices) {
      m_aRuns.shrink_to_fit();
      m_aSegments.shrink_to_fit();
      m_aOwnLists.shrink_to_fit();
      m_Tree.emplace(m_aRuns);
      m_nFilled = static_cast<std::size_t>(
          std::count_if(m_aRuns.begin(), m_aRuns.end(), [](const ListRun& r) { return !r.m_Box.IsEmpty(); }));
    }
  } catch (const std::bad_alloc&) {
  }
  if (!m_Tree || Bytes() * 3 > kMostBytesPerTriangle * m_uVertices) DropBounds();
}
