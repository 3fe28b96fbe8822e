// A host that uses all of the component for as long as it lives: one context with viewers, lights, fog, clip
// planes, fonts, textures, lists and captures. One host thread a host.

#pragma once

#include "support/RichScene.h"

/// A context and a painter of everything. The thread that makes it calls Round, again and again. It doesn't
/// select: Mesa's software driver keeps some kilobytes of each selection for ever, by plain GL too.
class SoakHost {
 public:
  SoakHost();
  ~SoakHost();
  SoakHost(const SoakHost&) = delete;
  SoakHost& operator=(const SoakHost&) = delete;

  /// One round of a host's life: things come, change and go while the draw thread draws.
  /// @return false when the context didn't do what it was asked for
  bool Round();

  long Frames() const { return *m_Drawn.frames; }

 private:
  void Draw(const Scene& aScene);

  GLPtr<TestCapture> m_Capture = GLMake<TestCapture>();
  RichScene m_Scene;
  int m_iRound = 0;
  FreeContext m_Drawn;
};
