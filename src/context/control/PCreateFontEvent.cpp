// PCreateFontEvent: builds the font inside a pass. Draw thread, between two frames.

#include "context/control/PCreateFontEvent.h"

#include "context/GLContext.h"
#include "media/GLFont.h"

PCreateFontEvent::PCreateFontEvent(GLContext& aContext, GLFont& aFont)
    : PEvent(&aContext, Lifetime::kOneRun),
      m_Context(aContext),
      m_pFont(GLPtr<GLFont>::FromBorrowed(&aFont)) {}

void PCreateFontEvent::Run() {
  const GLSiteLock gl(m_Context);
  // Before the first rendering context exists, the font cannot be built. The first frame builds it.
  if (m_Context.HasFont(m_pFont.Get()) && m_Context.IsCurrentHere()) m_pFont->EnsureLists(m_Context);
  Deactivate();
}
