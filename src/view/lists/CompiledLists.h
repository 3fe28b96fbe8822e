// CompiledLists: the lists of one rendering context that a canvas has compiled, with their bounds and
// recorder. Draw thread, with GL current, unless an operation documents otherwise.

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
  /// Returns the recorder of the open list, to which the canvas reports; null if no list is open.
  ListRecorder* Recorder() noexcept { return m_Recorder.IsRecording() ? &m_Recorder : nullptr; }

  /// Draws a list, or compiles the call into the open list. In a selection pass, draws only the parts that
  /// can be hit.
  void Call(unsigned aList) noexcept override;

  /// Checks lists that earlier selections have drawn. Called before a selection, outside of selection mode.
  /// The check of a list draws about as many vertices as the list has, and at least 2,000,000. The rest of a
  /// longer check follows before later selections.
  void Check() noexcept;
  void BeginSelectionPass() noexcept { m_bPicking = true; }
  void EndSelectionPass() noexcept { m_bPicking = false; }

  /// Deletes the runs and bounds of lists, but not the hosts' lists.
  void Delete(unsigned aFirst, int aCount) noexcept;
  void DeleteAll() noexcept;
  /// Discards all entries after the rendering context was destroyed. Needs no GL.
  void Forget() noexcept;

 private:
  void Settle() noexcept;
  void FinishRecording() noexcept;
  CompiledList* Find(unsigned aList) noexcept;
  void CallPicked(CompiledList& aList, unsigned aName) noexcept;

  std::unordered_map<unsigned, std::unique_ptr<CompiledList>> m_Lists;  // keys are the hosts' names
  ListRecorder m_Recorder;
  unsigned m_uOpen = 0;                // host's name of the list that is being recorded
  std::vector<unsigned> m_aUnchecked;  // unchecked lists that selections have drawn
  std::vector<std::uint32_t> m_aFound;
  int m_nDepth = 0;  // depth of nested calls
  bool m_bPicking = false;
};
