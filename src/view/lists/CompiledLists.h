// CompiledLists: the lists of one rendering context that a canvas has compiled, as far as the component knows
// more of them than their names. Draw thread, with GL current, unless an operation says otherwise.

#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "view/lists/CompiledList.h"
#include "view/lists/ListRecorder.h"

class CompiledLists final : private CompiledList::Caller {
 public:
  /// Opens a list and records it.
  void Begin(unsigned aList) noexcept;
  /// Closes the open list.
  void End() noexcept;
  /// What the canvas reports to while a list is open; null while none is.
  ListRecorder* Recorder() noexcept { return m_Recorder.IsRecording() ? &m_Recorder : nullptr; }

  /// Draws a list, or compiles the call into the open list. In a selection pass draws what can be hit.
  void Call(unsigned aList) noexcept override;

  /// Checks lists that earlier selections have drawn. Before a selection, outside of selection mode.
  /// A long list is checked in several steps, so that a selection takes at most about twice its time.
  /// @param aHeight of the surface, in pixels
  void Check(int aHeight) noexcept;
  /// A selection pass begins or ends.
  void SetPicking(bool aPicking) noexcept { m_bPicking = aPicking; }

  /// Deletes what belongs to the lists, but not the lists themselves.
  void Delete(unsigned aFirst, int aCount) noexcept;
  void DeleteAll() noexcept;
  /// All lists are gone with their rendering context. Needs no GL.
  void Forget() noexcept;

 private:
  void Settle() noexcept;
  void FinishRecording() noexcept;
  CompiledList* Find(unsigned aList) noexcept;
  void CallPicked(CompiledList& aList, unsigned aName) noexcept;

  std::unordered_map<unsigned, std::unique_ptr<CompiledList>> m_Lists;  // by the hosts' names
  ListRecorder m_Recorder;
  unsigned m_uOpen = 0;                // the host's name of the list that is recorded
  std::vector<unsigned> m_aUnchecked;  // lists that selections have drawn whole
  std::vector<std::uint32_t> m_aFound;
  int m_nDepth = 0;  // of nested calls
  bool m_bPicking = false;
};
