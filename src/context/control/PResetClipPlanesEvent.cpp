// PResetClipPlanesEvent: resets the clip planes inside a pass. Draw thread, between two frames.

#include "context/control/PResetClipPlanesEvent.h"

#include "context/GLContext.h"

PResetClipPlanesEvent::PResetClipPlanesEvent(GLContext& aContext)
    : PEvent(&aContext, Lifetime::kOneRun), m_Context(aContext) {}

void PResetClipPlanesEvent::Run() {
  const GLSiteLock gl(m_Context);
  if (m_Context.IsCurrentHere()) m_Context.ResetGLClipPlanes();
}
