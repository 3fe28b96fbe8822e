// The tasks that a context hands to its draw thread. Run on the draw thread between two frames.

#include "context/control/ContextTasks.h"

#include "context/GLContext.h"
#include "media/GLFont.h"

PCreateFontEvent::PCreateFontEvent(GLContext& aContext, GLFont& aFont)
    : PEvent(&aContext, true, false), m_Context(aContext), m_pFont(GLPtr<GLFont>::FromBorrowed(&aFont)) {}

void PCreateFontEvent::Run() {
  m_Context.LockGL();
  // Before the first rendering context there is nothing to build in; the first Print builds then.
  if (m_Context.HasFont(m_pFont.Get()) && m_Context.IsCurrentHere()) m_pFont->CreateFontLists();
  m_Context.UnlockGL();
  m_bDone = true;
  SetActive(false);
}

PResetClipPlanesEvent::PResetClipPlanesEvent(GLContext& aContext)
    : PEvent(&aContext, true, false), m_Context(aContext) {}

void PResetClipPlanesEvent::Run() {
  m_Context.LockGL();  // a capture leaves nothing current
  if (m_Context.IsCurrentHere()) m_Context.DisableAllClipPlanes();
  m_Context.UnlockGL();
}
