// GLContext: list keys, handles of display lists that go stale all at once. With GL current, in practice on
// the draw thread inside a painter or a task.

#include "component/Module.h"
#include "context/GLContext.h"
#include "platform/GL.h"

namespace {

constexpr GLuint kLastName = 0xFFFF;

GLuint NameOf(ULONG aKey) noexcept { return aKey & kLastName; }

bool IsOfThisGeneration(ULONG aKey) noexcept { return aKey >> 16 == (g_uListGeneration & 0xFFFF); }

}  // namespace

// Lists whose keys another context has made stale go, once this one comes to draw or to make new ones.
void GLContext::DropStaleLists() noexcept {
  const ULONG generation = g_uListGeneration;
  if (m_uListsGeneration == generation) return;
  m_Lists.Delete();
  m_uListsGeneration = generation;
}

ULONG GLContext::GenListKey(int aCount) noexcept {
  DropStaleLists();
  const GLuint name = GenLists(aCount);
  if (name != 0) m_Lists.Add(name, aCount);
  return (m_uListsGeneration << 16) | name;
}

// Some drivers give no name a second time, and each capture uses up all names of a scene twice. So where GL's
// are past those that DropAllLists takes along, free ones among these are looked for. A name that doesn't fit
// a key is given back: 0 says that there are no lists.
unsigned GLContext::GenLists(int aCount) noexcept {
  constexpr GLuint kPastDropped = kDroppedLists + 1;
  const GLuint name = glGenLists(aCount);
  const GLuint end = name + static_cast<GLuint>(aCount);
  if (end <= kPastDropped) return name;
  const GLuint free = FindFreeLists(aCount);
  if (free == 0 && end <= kLastName + 1) return name;
  glDeleteLists(name, aCount);
  for (GLuint list = free; free != 0 && list < free + static_cast<GLuint>(aCount); ++list) {
    glNewList(list, GL_COMPILE);  // takes the name
    glEndList();
  }
  return free;
}

// The search goes on where the last one ended, so that many lists in a row cost one walk. 0 for none.
unsigned GLContext::FindFreeLists(int aCount) noexcept {
  constexpr GLuint kPastDropped = kDroppedLists + 1;
  const auto count = static_cast<GLuint>(aCount);
  GLuint run = 0;
  for (GLuint step = 0; step < 2 * kPastDropped; ++step) {
    if (m_uNextList >= kPastDropped) {
      m_uNextList = 1;
      run = 0;
    }
    run = glIsList(m_uNextList++) == GL_FALSE ? run + 1 : 0;
    if (run == count) return m_uNextList - count;
  }
  return 0;
}

ULONG GLContext::BeginListKey() noexcept {
  const ULONG key = GenListKey(1);
  if (NameOf(key) != 0) glNewList(NameOf(key), GL_COMPILE);
  return key;
}

void GLContext::EndListKey() noexcept { glEndList(); }

void GLContext::CallListKey(ULONG aKey) noexcept { glCallList(NameOf(aKey)); }

ULONG GLContext::GetListBase(ULONG aKey) const noexcept { return NameOf(aKey); }

void GLContext::DeleteListKey(ULONG aKey, int aCount) noexcept {
  if (!IsOfThisGeneration(aKey)) return;
  glDeleteLists(NameOf(aKey), aCount);
  m_Lists.Remove(NameOf(aKey), aCount);
}

bool GLContext::IsListKeyValid(ULONG aKey) const noexcept {
  return aKey != 0 && IsOfThisGeneration(aKey) && glIsList(NameOf(aKey)) != GL_FALSE;
}
