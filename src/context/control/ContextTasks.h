// ContextTasks: tasks that a context posts to its draw thread without waiting for them.
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
  bool m_bDone = false;
};

/// Disables all clip planes in GL.
class PResetClipPlanesEvent final : public PEvent {
 public:
  explicit PResetClipPlanesEvent(GLContext& aContext);
  void Run() override;

 private:
  GLContext& m_Context;
};

/// Records the context whose draw thread the calling thread is; null for none.
void MarkDrawThread(GLContext* aContext) noexcept;
