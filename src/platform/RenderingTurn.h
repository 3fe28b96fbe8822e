// RenderingTurn: keeps the rendering contexts of several threads from drawing at the same time where the
// driver can't bear it. Draw threads.

#pragma once

#ifdef _WIN32

/// Drivers here bear contexts on several threads.
class RenderingTurn {
 public:
  RenderingTurn() noexcept {}
  static void Begin() noexcept {}
  static void End() noexcept {}
};
class RenderingBreak {
 public:
  RenderingBreak() noexcept {}
};

#else

/// The calling thread's turn to use GL, for the object's length or from Begin to End; turns nest. Where the
/// driver needs turns, a thread waits for its own, first come, first served, for at most two seconds: then it
/// draws without one, so that painters that wait for each other come to an end.
class RenderingTurn {
 public:
  RenderingTurn() noexcept { Begin(); }
  ~RenderingTurn() { End(); }
  RenderingTurn(const RenderingTurn&) = delete;
  RenderingTurn& operator=(const RenderingTurn&) = delete;

  static void Begin() noexcept;
  static void End() noexcept;
};

/// Gives the calling thread's turn, if it has one, to others for the object's length. For a thread that waits
/// for another's drawing.
class RenderingBreak {
 public:
  RenderingBreak() noexcept;
  ~RenderingBreak();
  RenderingBreak(const RenderingBreak&) = delete;
  RenderingBreak& operator=(const RenderingBreak&) = delete;

 private:
  int m_iDepth;
};

/// Looks at the driver of the rendering context that has just become current. Any thread.
void NoteRenderingDriver() noexcept;

#endif
