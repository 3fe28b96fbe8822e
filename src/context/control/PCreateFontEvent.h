// PCreateFontEvent: builds a font. A context posts it to its draw thread and does not wait for it.
// Created on host threads; run and deleted on the draw thread, between two frames.

#pragma once

#include <gllib/GLPtr.h>

#include "thread/PEvent.h"

class GLContext;
class GLFont;

/// Builds the display lists of a font. Holds a reference. Does nothing if the font has left its context.
class PCreateFontEvent final : public PEvent {
 public:
  PCreateFontEvent(GLContext& aContext, GLFont& aFont);
  void Run() override;

 private:
  GLContext& m_Context;
  GLPtr<GLFont> m_pFont;
};
