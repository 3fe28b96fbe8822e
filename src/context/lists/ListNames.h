// ListNames: which display lists of a context's current rendering context its list keys name. Draw thread.
// Keys of all contexts go stale at once, but only the context that captures drops its lists: the others know
// by this what they still hold.

#pragma once

#include <bitset>

class ListNames {
 public:
  /// Notes a block of names that were made together.
  void Add(unsigned aFirst, int aCount) noexcept;
  void Remove(unsigned aFirst, int aCount) noexcept;
  std::size_t Count() const noexcept { return m_bsHeld.count(); }
  /// Forgets all: they are gone with their rendering context.
  void Clear() noexcept;
  /// Deletes all in the rendering context that is current, block by block: what a driver keeps beside a block
  /// goes with the whole block alone.
  void Delete() noexcept;

 private:
  static constexpr unsigned kNames = 0x10000;  // those that fit a key

  std::bitset<kNames> m_bsHeld, m_bsFirst;  // all names; the first ones of blocks
};
