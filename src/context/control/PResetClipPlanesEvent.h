// PResetClipPlanesEvent: resets the clip planes. A context posts it to its draw thread and does not wait.
// Created on host threads; run and deleted on the draw thread, between two frames.

#pragma once

#include "thread/PEvent.h"

class GLContext;

/// Disables all clip planes in GL.
class PResetClipPlanesEvent final : public PEvent {
 public:
  explicit PResetClipPlanesEvent(GLContext& aContext);
  void Run() override;

 private:
  GLContext& m_Context;
};
