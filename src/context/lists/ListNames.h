// ListNames: names of the display lists that exist in one rendering context for list keys. Draw thread.
// Keys of all contexts become stale at once, but only the context that captures deletes its lists. Other
// contexts use this set to delete theirs later.

#pragma once

#include <bitset>

class ListNames {
 public:
  /// Adds a block of names that were created together.
  void Add(unsigned aFirst, int aCount) noexcept;
  void Remove(unsigned aFirst, int aCount) noexcept;
  std::size_t Count() const noexcept { return m_bsHeld.count(); }
  /// Removes all names after their rendering context was destroyed.
  void Clear() noexcept;
  /// Deletes all lists in the current rendering context, block by block. Drivers may free the memory of a
  /// block only when the whole block is deleted by one call.
  void Delete() noexcept;

 private:
  static constexpr unsigned kNames = 0x10000;  // number of names that fit a key

  std::bitset<kNames> m_bsHeld, m_bsFirst;  // all names; first names of blocks
};
