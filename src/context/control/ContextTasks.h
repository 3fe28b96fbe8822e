// The tasks that a context hands to its draw thread without waiting for them.
// Made on host threads, run and deleted on the draw thread between two frames.

#pragma once

#include <gllib/GLPtr.h>

#include "thread/PEvent.h"

class GLContext;
class GLFont;

/// Builds the display lists of a font. Holds a reference, and does nothing for a font that has left its
/// context.
class PCreateFontEvent final : public PEvent {
 public:
  PCreateFontEvent(GLContext& aContext, GLFont& aFont);
  void Run() override;

 private:
  GLContext& m_Context;
  GLPtr<GLFont> m_pFont;
  bool m_bDone = false;
};

/// Switches all clip planes off in GL.
class PResetClipPlanesEvent final : public PEvent {
 public:
  explicit PResetClipPlanesEvent(GLContext& aContext);
  void Run() override;

 private:
  GLContext& m_Context;
};

/// Notes on the calling thread that it is the draw thread of a context, or of none.
void MarkDrawThread(GLContext* aContext) noexcept;
