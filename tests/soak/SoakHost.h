// A host that uses all of the component for as long as it lives: one context with viewers, lights, fog, clip
// planes, fonts, textures, lists, and captures or selections. One host thread a host.

#pragma once

#include <gllib/GLLibHost.h>

/// What a host does beside drawing, as far as Mesa's software driver bears it: it keeps lists of vertices
/// that were drawn in selection mode, and a mebibyte of each context that ever selected.
enum class SoakRole {
  kSelects,  // without lists of vertices; stays
  kCaptures,
};

/// A context and a painter of everything. The thread that makes it calls Round, again and again.
class SoakHost {
 public:
  explicit SoakHost(SoakRole aRole);
  ~SoakHost();
  SoakHost(const SoakHost&) = delete;
  SoakHost& operator=(const SoakHost&) = delete;

  /// One round of a host's life: things come, change and go while the draw thread draws.
  /// @return false when the context didn't do what it was asked for
  bool Round();

  long Frames() const;

 private:
  class Painter;
  class Capture;

  void Change(int aRound);
  bool TakePicture();
  bool Select();

  const SoakRole m_Role;
  int m_iRound = 0;
  GLPtr<IGLContext> m_Context;
  IGLViewer* m_apViewers[2] = {};
  GLPtr<Painter> m_Painter;
  GLPtr<Capture> m_Capture;
};
