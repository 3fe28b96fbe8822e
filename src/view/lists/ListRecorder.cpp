// ListRecorder: divides a list into runs. Draw thread, with GL current.

#include "view/lists/ListRecorder.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace {

// A run ends after the primitive with which it reaches this number of vertices. Runs without an identifier
// are longer, because dividing them gains less. Inside one BeginDraw, runs with an identifier are as long.
// Smaller runs slow down frames.
constexpr std::uint32_t kNamedVertices = 512, kVertices = 4096;
// A run that enables culling is always drawn; see ListCheck.cpp. So it ends early.
constexpr std::uint32_t kCullingVertices = 64;
constexpr std::uint32_t kNever = std::numeric_limits<std::uint32_t>::max();

/// Returns the vertices per primitive of modes whose primitives share no vertices; 0 for other modes.
std::uint32_t VerticesEach(GLenum aMode) noexcept {
  switch (aMode) {
    case GL_POINTS:
      return 1;
    case GL_LINES:
      return 2;
    case GL_TRIANGLES:
      return 3;
    case GL_QUADS:
      return 4;
    default:
      return 0;
  }
}

bool IsMesa() noexcept {
  const auto* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
  return version != nullptr && std::strstr(version, "Mesa") != nullptr;
}

}  // namespace

bool ListRecorder::IsOpen() const noexcept {
  GLint open = 0;
  glGetIntegerv(GL_LIST_INDEX, &open);
  return static_cast<unsigned>(open) == m_uRun;
}

void ListRecorder::Start(unsigned aList) noexcept {
  try {
    m_pList = std::make_unique<CompiledList>(aList);
    m_pList->m_aRuns.reserve(1);
    m_pList->m_aSegments.reserve(1);
  } catch (const std::bad_alloc&) {
    m_pList.reset();
    return;
  }
  m_uRun = aList;
  m_Now = m_Start = {};
  m_Box = {};
  m_fFinite = 0;
  m_uVertices = 0;
  m_uSlowFrom = 0;
  m_bMayMerge = false;
  m_bMesa = IsMesa();
  m_bInside = m_bContinues = m_bNamed = m_bCulls = false;
  m_bBounded = true;
}

std::unique_ptr<CompiledList> ListRecorder::Finish() noexcept {
  if (IsOpen()) glEndList();
  if (m_bInside) Unbounded();
  CloseRun();
  CloseSegment(0);
  if (m_pList->m_uWhole != 0) MakeWhole();
  if (m_bBounded) {
    m_pList->BuildTree();
  } else {
    m_pList->DropBounds();
  }
  std::unique_ptr<CompiledList> list = std::move(m_pList);
  return list->m_uWhole != 0 || list->IsBounded() ? std::move(list) : nullptr;
}

void ListRecorder::MakeWhole() const noexcept {
  glNewList(m_pList->m_uWhole, GL_COMPILE);
  std::uint32_t run = 0;
  for (const ListSegment& segment : m_pList->m_aSegments) {
    for (; run < segment.m_uEnd; ++run) glCallList(m_pList->m_aRuns[run].m_uList);
    if (segment.m_uCalled != 0) glCallList(segment.m_After.m_uList);
  }
  glEndList();
}

void ListRecorder::Begin(GLenum aMode) noexcept {
  if (m_bInside) return Unbounded();
  KeepApart(aMode);
  m_bInside = true;
  m_uMode = aMode;
  m_uPrimitiveStart = m_uVertices;
  m_uSlowFrom = m_bBounded && VerticesEach(aMode) != 0 ? LongestPrimitives() : kNever;
}

// Mesa merges consecutive primitives of a list into one part per kind. Version 22.3 has two faults, also
// without this component. Selection finds nothing in the second part and crashes at the third. Strips of
// fewer than three vertices corrupt the heap when they are merged. A call without an effect prevents the
// merging. Strips and fans of four vertices or more would be safe, but their length is not known here. Those
// of three become triangles, which are another kind.
void ListRecorder::KeepApart(GLenum aMode) noexcept {
  const bool merges = aMode != GL_LINE_LOOP && aMode != GL_TRIANGLE_STRIP && aMode != GL_TRIANGLE_FAN;
  if (m_bMayMerge && m_bMesa && !(merges && aMode == m_uMode)) glCallLists(0, GL_UNSIGNED_BYTE, nullptr);
  m_bMayMerge = true;
}

void ListRecorder::End() noexcept {
  if (!std::exchange(m_bInside, false)) return Unbounded();
  m_uSlowFrom = m_bBounded ? 0 : kNever;  // a vertex outside of Begin and End makes the list unbounded
  const std::uint32_t most = m_bNamed ? std::min(kNamedVertices, LongestPrimitives()) : LongestPrimitives();
  const bool ends = m_bBounded && m_uVertices >= most;
  if ((ends || StaysAlone()) && PrepareSplit()) Split();
}

// A run that begins inside a primitive may set its first colour or normal after its first vertex. If such a
// list also calls lists, as text does, Mesa 22.3 draws these wrongly from then on, or crashes. This also
// happens without this component. So such a run ends with its primitive.
bool ListRecorder::StaysAlone() const noexcept { return m_bMesa && m_bContinues && m_uVertices > 0; }

// Returns the number of vertices from which a run ends, also between two primitives of one BeginDraw.
std::uint32_t ListRecorder::LongestPrimitives() const noexcept {
  return m_bCulls ? kCullingVertices : kVertices;
}

void ListRecorder::VertexSlow() noexcept {
  if (!m_bInside) return Unbounded();
  if ((m_uVertices - m_uPrimitiveStart) % VerticesEach(m_uMode) != 0 || !PrepareSplit()) return;
  glEnd();
  Split();
  glBegin(m_uMode);
  m_uPrimitiveStart = 0;
}

void ListRecorder::Name(ULONG aName) noexcept {
  if (m_bInside) return;  // GL ignores the call there
  ++m_Now.m_uNames;
  m_Now.m_uName = aName;
  m_bNamed = true;
}

void ListRecorder::State(const HitState& aState) noexcept {
  if (m_bInside) return;  // GL ignores the call there
  m_Now.m_State.Overlay(aState);
  if (aState.m_uCulling == GL_CULL_FACE) m_bCulls = true;
}

void ListRecorder::Call(unsigned aList, unsigned aWhole) noexcept {
  // A list that calls itself draws the list that is in effect after its end.
  const bool itself = m_pList->m_uList == aList;
  const bool small = m_pList->m_aRuns.empty() && m_uVertices < CompiledList::kFewestVertices;
  if (m_bInside || itself || small) Unbounded();
  if (itself && m_pList->m_uWhole != 0) aWhole = m_pList->m_uWhole;
  if (!m_bBounded || !PrepareSplit()) {
    glCallList(aWhole);
    return;
  }
  CloseRun();
  m_Now.m_uList = aWhole;
  CloseSegment(aList);
  m_Now.m_State = {};  // the nested list may change the state
  Split();
}

void ListRecorder::Unbounded() noexcept {
  m_bBounded = false;
  m_uSlowFrom = kNever;
}

// Reserves memory for the current and the next run, so that the code between them cannot fail.
bool ListRecorder::PrepareSplit() noexcept {
  if (IsOpen()) {
    try {
      const auto grow = [](auto& aItems) {
        if (aItems.size() + 2 > aItems.capacity()) aItems.reserve(2 * aItems.size() + 2);
      };
      grow(m_pList->m_aRuns);
      grow(m_pList->m_aSegments);
      grow(m_pList->m_aOwnLists);
      return true;
    } catch (const std::bad_alloc&) {
    }
  }
  Unbounded();
  return false;
}

void ListRecorder::Split() noexcept {
  CloseRun();
  glEndList();
  if (m_pList->m_uWhole == 0) {
    m_pList->m_uWhole = TakeName();
    m_pList->m_aOwnLists.push_back(m_pList->m_uWhole);
  }
  m_uRun = TakeName();
  m_pList->m_aOwnLists.push_back(m_uRun);
  glNewList(m_uRun, GL_COMPILE);
  m_Start = m_Now;
  m_bMayMerge = m_bContinues = m_bInside;
  m_uSlowFrom = m_bInside ? LongestPrimitives() : 0;
}

// Does nothing if the run is already closed.
void ListRecorder::CloseRun() noexcept {
  if (m_uRun == 0) return;
  m_Start.m_Box = m_fFinite == 0 && !m_bCulls ? m_Box : Box::Everything();
  m_Start.m_uList = std::exchange(m_uRun, 0);
  m_pList->m_aRuns.push_back(m_Start);
  m_pList->m_uVertices += m_uVertices;
  m_Box = {};
  m_fFinite = 0;
  m_uVertices = 0;
  m_bNamed = m_bCulls = false;
}

void ListRecorder::CloseSegment(unsigned aCalled) noexcept {
  m_pList->m_aSegments.push_back({static_cast<std::uint32_t>(m_pList->m_aRuns.size()), aCalled, m_Now});
}

// Takes names that do not fit a list key; hosts' lists use the others.
unsigned ListRecorder::TakeName() noexcept {
  do {
    m_uNextName = m_uNextName < kLastName ? m_uNextName + 1 : kFirstName;
  } while (glIsList(m_uNextName) != GL_FALSE);
  return m_uNextName;
}
