// ListNames: the sets of names, and the deletion of blocks. Draw thread, with GL current.

#include "context/lists/ListNames.h"

#include <algorithm>

#include "platform/GL.h"

void ListNames::Add(unsigned aFirst, int aCount) noexcept {
  const unsigned end = std::min(aFirst + static_cast<unsigned>(aCount), kNames);
  for (unsigned name = aFirst; name < end; ++name) m_bsHeld.set(name);
  if (aFirst < end) m_bsFirst.set(aFirst);
}

void ListNames::Remove(unsigned aFirst, int aCount) noexcept {
  const unsigned end = std::min(aFirst + static_cast<unsigned>(aCount), kNames);
  for (unsigned name = aFirst; name < end; ++name) {
    m_bsHeld.reset(name);
    m_bsFirst.reset(name);
  }
}

void ListNames::Clear() noexcept {
  m_bsHeld.reset();
  m_bsFirst.reset();
}

void ListNames::Delete() noexcept {
  if (m_bsHeld.none()) return;
  for (unsigned first = 1; first < kNames; ++first) {
    if (!m_bsHeld.test(first)) continue;
    unsigned end = first + 1;
    while (end < kNames && m_bsHeld.test(end) && !m_bsFirst.test(end)) ++end;
    glDeleteLists(first, static_cast<GLsizei>(end - first));
    first = end - 1;
  }
  Clear();
}
