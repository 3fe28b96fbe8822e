// DisplayLists: names and generations of display lists. Draw thread, with GL current.

#include "context/lists/DisplayLists.h"

#include "component/Module.h"
#include "platform/GL.h"
#include "platform/Log.h"

namespace {

constexpr GLuint kPastDropped = DisplayLists::kDropped + 1;
constexpr GLuint kPastLast = 0x10000;  // first name that does not fit a key

}  // namespace

ULONG DisplayLists::Generate(int aCount) noexcept {
  const GLuint name = TakeNames(aCount);
  if (name != 0) m_Names.Add(name, aCount);
  if (name == 0 && !m_bExhausted)
    LogWarning("GL has no range of %d free display list names: no list is compiled", aCount);
  m_bExhausted = name == 0;
  return (m_uGeneration << 16) | name;
}

// Returns the first of aCount new names, all of which fit a key; 0 if there are none. Some drivers return
// only names above all names in use, and runs of divided lists have large names. So if GL returns names
// beyond those that DropAll deletes, this searches for free names.
unsigned DisplayLists::TakeNames(int aCount) noexcept {
  const GLuint name = glGenLists(aCount);
  const GLuint end = name + static_cast<GLuint>(aCount);
  if (end <= kPastDropped) return name;
  const GLuint free = FindFreeNames(aCount);
  if (free == 0 && end <= kLastName + 1) return name;
  glDeleteLists(name, aCount);
  for (GLuint list = free; free != 0 && list < free + static_cast<GLuint>(aCount); ++list) {
    glNewList(list, GL_COMPILE);  // reserves the name
    glEndList();
  }
  return free;
}

// Returns the first of aCount free names; 0 for none. Continues where the last search ended, so that creating
// many lists visits each name once.
unsigned DisplayLists::FindFreeNames(int aCount) noexcept {
  const auto count = static_cast<GLuint>(aCount);
  GLuint run = 0;
  for (GLuint step = 0; step < 2 * kPastLast; ++step) {
    if (m_uNextSearch >= kPastLast) {
      m_uNextSearch = 1;
      run = 0;
    }
    run = glIsList(m_uNextSearch++) == GL_FALSE ? run + 1 : 0;
    if (run == count) return m_uNextSearch - count;
  }
  return 0;
}

void DisplayLists::Delete(ULONG aKey, int aCount) noexcept {
  if (aKey >> 16 != (m_uGeneration & 0xFFFF)) return;
  m_Compiled.Delete(NameOf(aKey), aCount);
  glDeleteLists(NameOf(aKey), aCount);
  m_Names.Remove(NameOf(aKey), aCount);
}

bool DisplayLists::IsValid(ULONG aKey) const noexcept {
  return aKey != 0 && aKey >> 16 == (m_uGeneration & 0xFFFF) && glIsList(NameOf(aKey)) != GL_FALSE;
}

void DisplayLists::DropStale() noexcept {
  const ULONG generation = g_uListGeneration;
  if (m_uGeneration == generation) return;
  LogEnd(ListsReason());
  m_Compiled.DeleteAll();
  m_Names.Delete();
  m_uGeneration = generation;
}

void DisplayLists::DropAll(const char* aReason) noexcept {
  LogEnd(aReason);
  m_Compiled.DeleteAll();
  m_Names.Delete();
  glDeleteLists(1, kDropped);
  m_uGeneration = RaiseListGeneration(aReason);
}

void DisplayLists::Forget() noexcept {
  LogEnd("their rendering context is replaced");
  m_Compiled.Forget();
  m_Names.Clear();
}

void DisplayLists::LogEnd(const char* aReason) const noexcept {
  if (!IsLogged(LogLevel::kInfo)) return;
  if (const std::size_t count = m_Names.Count(); count != 0)
    LogInfo("%u display lists are discarded, glyphs included: %s", static_cast<unsigned>(count), aReason);
}
