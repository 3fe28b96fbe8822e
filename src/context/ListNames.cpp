// ListNames: the end of all lists that are held. Draw thread, with GL current.

#include "context/ListNames.h"

#include "platform/GL.h"

void ListNames::Delete() noexcept {
  if (m_bsHeld.none()) return;
  for (GLuint name = 1; name <= kLast; ++name) {
    if (m_bsHeld.test(name)) glDeleteLists(name, 1);
  }
  Clear();
}
