// RenderingTurn: serialises drawing of several threads on drivers that would crash otherwise. GLPass holds
// the turn; DrawThreadWait releases it. Draw threads.

#pragma once

#ifdef _WIN32

/// Does nothing: drivers on Windows support concurrent drawing.
class RenderingTurn {
 public:
  RenderingTurn() noexcept {}
};
class RenderingBreak {
 public:
  RenderingBreak() noexcept {}
};

#else

/// The calling thread's turn to use GL, for the lifetime of the object. Turns nest. If the driver needs
/// turns, waiting threads enter in FIFO order. A thread that has waited two seconds draws without a turn.
/// This resolves deadlocks of painters that wait for each other through locks of the host.
class RenderingTurn {
 public:
  RenderingTurn() noexcept;
  ~RenderingTurn();
  RenderingTurn(const RenderingTurn&) = delete;
  RenderingTurn& operator=(const RenderingTurn&) = delete;
};

/// Releases the calling thread's turn, if any, for the lifetime of the object.
class RenderingBreak {
 public:
  RenderingBreak() noexcept;
  ~RenderingBreak();
  RenderingBreak(const RenderingBreak&) = delete;
  RenderingBreak& operator=(const RenderingBreak&) = delete;

 private:
  int m_iDepth;
};

/// Detects whether the driver of the current rendering context needs turns. Any thread.
void NoteRenderingDriver() noexcept;

#endif
