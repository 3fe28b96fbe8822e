// GLContext: list keys, handles of display lists that go stale all at once. With GL current, in practice on
// the draw thread inside a painter or a task.

#include "component/Module.h"
#include "context/GLContext.h"
#include "platform/GL.h"

namespace {

constexpr GLuint kLastName = 0xFFFF;

ULONG KeyOf(GLuint aName) noexcept { return (g_uListGeneration << 16) | (aName & kLastName); }

GLuint NameOf(ULONG aKey) noexcept { return aKey & kLastName; }

bool IsOfThisGeneration(ULONG aKey) noexcept { return aKey >> 16 == (g_uListGeneration & 0xFFFF); }

}  // namespace

// A name that doesn't fit a key is given back: the key of 0 says that there are no lists.
ULONG GLContext::GenListKey(int aCount) noexcept {
  const GLuint name = glGenLists(aCount);
  if (name + static_cast<GLuint>(aCount) <= kLastName + 1) return KeyOf(name);
  glDeleteLists(name, aCount);
  return KeyOf(0);
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
  if (IsOfThisGeneration(aKey)) glDeleteLists(NameOf(aKey), aCount);
}

bool GLContext::IsListKeyValid(ULONG aKey) const noexcept {
  return aKey != 0 && IsOfThisGeneration(aKey) && glIsList(NameOf(aKey)) != GL_FALSE;
}
