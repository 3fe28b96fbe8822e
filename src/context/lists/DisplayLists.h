// DisplayLists: the display lists of one rendering context that list keys refer to.
// Draw thread, with that rendering context current, unless an operation documents otherwise.

#pragma once

#include <gllib/GLPlatform.h>

#include "context/lists/ListNames.h"
#include "view/lists/CompiledLists.h"

/// The lists of one rendering context. A key contains the generation of lists in its high 16 bits and the
/// first GL name in its low 16 bits. The generation does not change during a pass: if another context makes
/// all lists stale meanwhile, that takes effect at the next pass.
class DisplayLists {
 public:
  static constexpr int kDropped = 32767;  ///< DropAll deletes the names from 1 to this one

  /// Returns the GL name in a key. Any thread.
  static unsigned NameOf(ULONG aKey) noexcept { return aKey & kLastName; }

  /// Reserves names for a block of lists.
  /// @return the key of the block; its name is 0 if GL has no names that fit a key
  ULONG Generate(int aCount) noexcept;
  /// Deletes aCount lists, starting with the key's first one, if the key is of the current generation.
  void Delete(ULONG aKey, int aCount) noexcept;
  /// Returns whether the key is of the current generation and its first list exists.
  bool IsValid(ULONG aKey) const noexcept;
  ULONG Generation() const noexcept { return m_uGeneration; }
  /// Returns the lists that a canvas compiles and draws.
  CompiledLists& Compiled() noexcept { return m_Compiled; }

  /// Deletes the lists if another context has made them stale. Called at the start of a pass.
  void DropStale() noexcept;
  /// Deletes all lists, also those that a painter created with GL calls, and makes all keys of the process
  /// stale.
  /// @param aReason a string literal, for the log
  void DropAll(const char* aReason) noexcept;
  /// Discards all entries after the rendering context was destroyed. Needs no GL.
  void Forget() noexcept;

 private:
  static constexpr unsigned kLastName = 0xFFFF;

  void LogEnd(const char* aReason) const noexcept;
  unsigned TakeNames(int aCount) noexcept;
  unsigned FindFreeNames(int aCount) noexcept;

  ListNames m_Names;
  CompiledLists m_Compiled;
  ULONG m_uGeneration = 0;
  bool m_bExhausted = false;   // the last Generate found no names
  unsigned m_uNextSearch = 1;  // start of the next search for free names
};
