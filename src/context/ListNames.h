// ListNames: which display lists of a context's current rendering context its list keys name. Draw thread.
// Keys of all contexts go stale at once, but only the context that captures drops its lists: the others know
// by this what they still hold.

#pragma once

#include <bitset>

class ListNames {
 public:
  void Add(unsigned aFirst, int aCount) noexcept {
    for (unsigned name = aFirst; aCount > 0; ++name, --aCount) m_bsHeld.set(name & kLast);
  }
  void Remove(unsigned aFirst, int aCount) noexcept {
    for (unsigned name = aFirst; aCount > 0; ++name, --aCount) m_bsHeld.reset(name & kLast);
  }
  /// Forgets all: they are gone, with their rendering context or from it.
  void Clear() noexcept { m_bsHeld.reset(); }
  /// Deletes all in the rendering context that is current.
  void Delete() noexcept;

 private:
  static constexpr unsigned kLast = 0xFFFF;  // of the names that fit a key

  std::bitset<kLast + 1> m_bsHeld;
};
