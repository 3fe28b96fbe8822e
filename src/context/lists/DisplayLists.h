// DisplayLists: the display lists of one rendering context that list keys name, and their end.
// Draw thread, with that rendering context current, unless an operation says otherwise.

#pragma once

#include <gllib/GLPlatform.h>

#include "context/lists/ListNames.h"
#include "view/lists/CompiledLists.h"

/// The lists of one rendering context. A key holds the generation of lists in its high 16 bits and the first
/// GL name in its low 16 bits. The generation is fixed for the length of a pass: another context that makes
/// all lists stale meanwhile takes effect at the next pass.
class DisplayLists {
 public:
  static constexpr int kDropped = 32767;  ///< the names that DropAll deletes, from 1

  /// The GL name in a key. Any thread.
  static unsigned NameOf(ULONG aKey) noexcept { return aKey & kLastName; }

  /// Takes names for a block of lists. @return its key; with name 0 if GL has none that fits a key
  ULONG Generate(int aCount) noexcept;
  /// Deletes aCount lists from the key's first on, if the key is of the present generation.
  void Delete(ULONG aKey, int aCount) noexcept;
  /// Whether the key is of the present generation and its first list exists.
  bool IsValid(ULONG aKey) const noexcept;
  ULONG Generation() const noexcept { return m_uGeneration; }
  /// The lists that a canvas compiles and draws.
  CompiledLists& Compiled() noexcept { return m_Compiled; }

  /// Deletes the lists if another context has made them stale. At the start of a pass.
  void DropStale() noexcept;
  /// Deletes all lists, those too that a painter made by itself, and makes all keys of the process stale. The
  /// reason is a literal, for the log.
  void DropAll(const char* aReason) noexcept;
  /// Forgets all lists: they are gone with their rendering context. Needs no GL.
  void Forget() noexcept;

 private:
  static constexpr unsigned kLastName = 0xFFFF;

  void LogEnd(const char* aReason) const noexcept;
  unsigned TakeNames(int aCount) noexcept;
  unsigned FindFreeNames(int aCount) noexcept;

  ListNames m_Names;
  CompiledLists m_Compiled;
  ULONG m_uGeneration = 0;
  bool m_bExhausted = false;   // the last block found no names
  unsigned m_uNextSearch = 1;  // where a search for free names goes on
};
