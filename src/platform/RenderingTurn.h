// RenderingTurn: keeps the rendering contexts of several threads from drawing at the same time, on drivers
// that crash then. GLPass holds the turn; DrawThreadWait gives it away. Draw threads.

#pragma once

#ifdef _WIN32

/// Drivers here draw on several threads at the same time.
class RenderingTurn {
 public:
  RenderingTurn() noexcept {}
};
class RenderingBreak {
 public:
  RenderingBreak() noexcept {}
};

#else

/// The calling thread's turn to use GL, for the object's length; turns nest. Where the driver needs turns, a
/// thread waits for its turn in FIFO order, for at most two seconds. Then it draws without one, so that
/// painters that wait for each other through the host's own locks come to an end.
class RenderingTurn {
 public:
  RenderingTurn() noexcept;
  ~RenderingTurn();
  RenderingTurn(const RenderingTurn&) = delete;
  RenderingTurn& operator=(const RenderingTurn&) = delete;
};

/// Gives the calling thread's turn, if it has one, to other threads for the object's length.
class RenderingBreak {
 public:
  RenderingBreak() noexcept;
  ~RenderingBreak();
  RenderingBreak(const RenderingBreak&) = delete;
  RenderingBreak& operator=(const RenderingBreak&) = delete;

 private:
  int m_iDepth;
};

/// Finds out whether the driver of the current rendering context needs turns. Any thread.
void NoteRenderingDriver() noexcept;

#endif
