// CompiledLists: selects how each list is drawn. Draw thread, with GL current.

#include "view/lists/CompiledLists.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/GL.h"

namespace {

constexpr int kDeepest = 64;                         // nesting depth that every GL supports
constexpr std::uint64_t kVerticesChecked = 2000000;  // minimum per selection

bool SelectsHere() noexcept {
  GLint mode = GL_RENDER, open = 0;
  GLboolean edge = GL_FALSE;
  glGetIntegerv(GL_RENDER_MODE, &mode);
  glGetIntegerv(GL_LIST_INDEX, &open);
  glGetBooleanv(GL_EDGE_FLAG, &edge);
  return mode == GL_SELECT && open == 0 && edge != GL_FALSE;
}

}  // namespace

// The entry is created first, because a list of several runs cannot be drawn correctly without one.
void CompiledLists::Begin(unsigned aList) noexcept {
  Settle();
  Delete(aList, 1);
  glNewList(aList, GL_COMPILE);
  try {
    m_Lists.try_emplace(aList);
    m_uOpen = aList;
    m_Recorder.Start(aList);
  } catch (const std::bad_alloc&) {
  }
}

void CompiledLists::End() noexcept {
  Settle();
  if (m_Recorder.IsRecording()) {
    FinishRecording();
  } else {
    glEndList();
  }
}

// The host may have called glEndList itself.
void CompiledLists::Settle() noexcept {
  if (m_Recorder.IsRecording() && !m_Recorder.IsOpen()) FinishRecording();
}

// The entry does not exist if all lists were deleted meanwhile.
void CompiledLists::FinishRecording() noexcept {
  std::unique_ptr<CompiledList> list = m_Recorder.Finish();
  const auto entry = m_Lists.find(m_uOpen);
  if (entry == m_Lists.end()) {
    if (list != nullptr) list->DeleteRuns();
  } else if (list != nullptr) {
    entry->second = std::move(list);
  } else {
    m_Lists.erase(entry);
  }
}

CompiledList* CompiledLists::Find(unsigned aList) noexcept {
  const auto found = m_Lists.find(aList);
  return found != m_Lists.end() ? found->second.get() : nullptr;
}

void CompiledLists::Call(unsigned aList) noexcept {
  Settle();
  CompiledList* const list = Find(aList);
  const unsigned whole = list != nullptr ? list->Whole() : aList;
  if (m_Recorder.IsRecording()) {
    m_Recorder.Call(aList, whole);
  } else if (list != nullptr && m_bPicking && list->IsBounded() && SelectsHere()) {
    CallPicked(*list, aList);
  } else {
    glCallList(whole);
  }
}

void CompiledLists::CallPicked(CompiledList& aList, unsigned aName) noexcept {
  if (m_nDepth >= kDeepest) return;
  ++m_nDepth;
  const std::size_t found = m_aFound.size();
  try {
    if (aList.IsChecked()) {
      aList.DrawPicked(*this, m_aFound);
    } else {
      if (std::find(m_aUnchecked.begin(), m_aUnchecked.end(), aName) == m_aUnchecked.end()) {
        m_aUnchecked.push_back(aName);
      }
      glCallList(aList.Whole());
    }
  } catch (const std::bad_alloc&) {  // thrown before anything is drawn
    m_aFound.resize(found);
    glCallList(aList.Whole());
  }
  --m_nDepth;
}

void CompiledLists::Check() noexcept {
  while (!m_aUnchecked.empty()) {
    CompiledList* const list = Find(m_aUnchecked.back());
    if (list != nullptr && list->IsBounded() && !list->IsChecked()) {
      list->Check(std::max(kVerticesChecked, list->Vertices()));
      if (list->IsBounded() && !list->IsChecked()) return;
    }
    m_aUnchecked.pop_back();
  }
}

void CompiledLists::Delete(unsigned aFirst, int aCount) noexcept {
  for (unsigned list = aFirst; !m_Lists.empty() && list < aFirst + static_cast<unsigned>(aCount); ++list) {
    const auto found = m_Lists.find(list);
    if (found == m_Lists.end() || found->second == nullptr) continue;
    found->second->DeleteRuns();
    m_Lists.erase(found);
  }
}

void CompiledLists::DeleteAll() noexcept {
  Settle();
  for (const auto& [name, list] : m_Lists) {
    if (list != nullptr) list->DeleteRuns();
  }
  m_Lists.clear();
  m_aUnchecked.clear();
}

void CompiledLists::Forget() noexcept {
  m_Recorder.Cancel();
  m_Lists.clear();
  m_aUnchecked.clear();
}
