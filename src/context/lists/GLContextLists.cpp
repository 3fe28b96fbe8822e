// GLContext: list keys for the canvas and the fonts. They refer to the lists of the current pass.
// Draw thread, inside a pass; elsewhere the operations do nothing.

#include "context/GLContext.h"
#include "context/frame/GLPass.h"
#include "platform/GL.h"

// Returns the lists of the current pass; null if no rendering context of this context is current.
DisplayLists* GLContext::ListsHere() const noexcept {
  return IsCurrentHere() ? &GLPass::Here()->Target().m_Lists : nullptr;
}

ULONG GLContext::GenListKey(int aCount) noexcept {
  DisplayLists* lists = ListsHere();
  return lists != nullptr ? lists->Generate(aCount) : 0;
}

ULONG GLContext::BeginListKey() noexcept {
  const ULONG key = GenListKey(1);
  if (GetListBase(key) != 0) ListsHere()->Compiled().Begin(GetListBase(key));
  return key;
}

void GLContext::EndListKey() noexcept {
  if (DisplayLists* lists = ListsHere()) lists->Compiled().End();
}

void GLContext::CallListKey(ULONG aKey) noexcept {
  if (DisplayLists* lists = ListsHere()) lists->Compiled().Call(GetListBase(aKey));
}

ListRecorder* GLContext::Recorder() noexcept {
  DisplayLists* lists = ListsHere();
  return lists != nullptr ? lists->Compiled().Recorder() : nullptr;
}

void GLContext::MarkListUnbounded() noexcept {
  if (ListRecorder* recorder = Recorder()) recorder->Unbounded();
}

ULONG GLContext::GetListBase(ULONG aKey) const noexcept { return DisplayLists::NameOf(aKey); }

void GLContext::DeleteListKey(ULONG aKey, int aCount) noexcept {
  if (DisplayLists* lists = ListsHere()) lists->Delete(aKey, aCount);
}

bool GLContext::IsListKeyValid(ULONG aKey) const noexcept {
  const DisplayLists* lists = ListsHere();
  return lists != nullptr && lists->IsValid(aKey);
}

bool GLContext::IsListOpen() const noexcept {
  GLint open = 0;
  glGetIntegerv(GL_LIST_INDEX, &open);
  return open != 0;
}
